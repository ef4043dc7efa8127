// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/ConnectPage.h"

#include "core/SettingsStore.h"
#include "device/http/LanAddress.h"
#include "ui/widgets/Announcement.h"
#include "ui/widgets/ThemedLabel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::seconds bluetoothScan{6};
constexpr int addressRole = Qt::UserRole;
constexpr int labelRole = Qt::UserRole + 1;
constexpr int leastListHeight = 72; // pixels, a few rows

/// A list that chooses nothing by itself when it gets the focus.
class DeviceList final : public QListWidget
{
public:
    using QListWidget::QListWidget;

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        const bool wasChosen = currentRow() >= 0;
        QListWidget::focusInEvent(event);
        if (!wasChosen) {
            setCurrentRow(-1);
        }
    }
};

} // namespace

ConnectPage::ConnectPage(Carriers carriers, const SettingsStore &settings, QWidget *parent)
    : SetupPage(Content::IsScrolled, parent)
    , m_carriers(std::move(carriers))
    , m_settings(settings)
{
    addTitle(tr("Connect to your device"));
    addText({}, tr("You do not need a Tallyforge account for this. Connect with a USB cable, "
                   "Bluetooth, or over your local network."));
    addCarriers();
    addDevices();
    addButtons();
    showNetwork(false);
}

void ConnectPage::addCarriers()
{
    auto *row = new QHBoxLayout;
    column()->addLayout(row);
    const auto add = [&](const QString &name, const QString &text) {
        auto *button = new QRadioButton(text, content());
        button->setObjectName(name);
        row->addWidget(button);
        return button;
    };
    m_usb = add(u"tallyforgeOverUsb"_s, tr("USB cable"));
    m_usb->setChecked(true);
    m_bluetooth = add(u"tallyforgeOverBluetooth"_s, tr("Bluetooth"));
    m_network = add(u"tallyforgeOverNetwork"_s, tr("Local network"));
    row->addStretch();
    for (const QRadioButton *button : {m_usb, m_bluetooth, m_network}) {
        connect(button, &QRadioButton::toggled, this, [this](bool checked) {
            if (checked) {
                scan();
            }
        });
    }
}

void ConnectPage::addDevices()
{
    m_hint = hint({}, content());
    m_hint->setObjectName(u"tallyforgeConnectHint"_s);
    column()->addWidget(m_hint);

    m_list = new DeviceList(content());
    m_list->setObjectName(u"tallyforgeDeviceList"_s);
    m_list->setAccessibleName(tr("Devices"));
    m_list->setMinimumHeight(leastListHeight);
    m_list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    column()->addWidget(m_list, 1);
    connect(m_list, &QListWidget::currentRowChanged, this, &ConnectPage::onRowChanged);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &ConnectPage::choose);
}

// Made when it is first needed: it takes as long as half of the page.
void ConnectPage::addHost()
{
    m_host = new QComboBox(content());
    m_host->setObjectName(u"tallyforgeLanHost"_s);
    m_host->setEditable(true);
    m_host->setInsertPolicy(QComboBox::NoInsert);
    m_host->setCompleter(nullptr); // it would make a known device's number of a typed one
    m_host->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    const QString example = tr("Device number or address, e.g. 0029 or 192.168.1.20");
    m_host->lineEdit()->setPlaceholderText(example);
    m_host->setAccessibleName(example);
    column()->insertWidget(column()->indexOf(m_list) + 1, m_host);
    setTabOrder(m_list, m_host);
    connect(m_host, &QComboBox::editTextChanged, this, &ConnectPage::onHostChanged);
}

void ConnectPage::addButtons()
{
    m_status = addText(u"tallyforgeConnectStatus"_s);
    auto *row = new QHBoxLayout;
    column()->addLayout(row);
    m_scanAgain = addButton(u"tallyforgeScan"_s, tr("Scan again"), row);
    connect(m_scanAgain, &QPushButton::clicked, this, &ConnectPage::scan);
    row->addStretch();
    m_connect = addButton(u"tallyforgeConnect"_s, tr("Connect"), row);
    m_connect->setEnabled(false);
    connect(m_connect, &QPushButton::clicked, this, &ConnectPage::choose);
    setReturnButton(m_connect);
}

// A scan that was under way belongs to a carrier that may not be the chosen one any more.
void ConnectPage::scan()
{
    dropScan();
    m_list->clear();
    m_connect->setEnabled(false);
    m_scanAgain->setEnabled(true);
    showNetwork(m_network->isChecked());
    if (m_network->isChecked()) {
        listLanDevices();
    } else if (m_usb->isChecked()) {
        scanUsb();
    } else {
        scanBluetooth();
    }
}

void ConnectPage::showNetwork(bool show)
{
    if (show && m_host == nullptr) {
        addHost();
    }
    m_list->setVisible(!show);
    m_scanAgain->setVisible(!show);
    if (m_host != nullptr) {
        m_host->setVisible(show);
    }
    // Without the list nothing else would take the page's spare height.
    column()->setAlignment(m_status, show ? Qt::AlignTop : Qt::Alignment());
    column()->setStretchFactor(m_status, show ? 1 : 0);
    setFirstField(show ? static_cast<QWidget *>(m_host) : m_list);
}

void ConnectPage::listLanDevices()
{
    m_hint->setText(tr("Type the device's number (the last digits of its name) or its network "
                       "address. This computer and the device must be on the same network."));
    m_status->setText(tr("The admin password is sent over your local network without encryption. "
                         "Use USB when you can."));
    m_host->clear();
    const QStringList ids = m_settings.lanDeviceIds();
    for (const QString &id : ids) {
        m_host->addItem(id, m_settings.lanDevice(id).host);
    }
    m_host->setEditText({});
    m_connect->setEnabled(false);
}

void ConnectPage::addItem(const QString &text, const QString &address, const QString &label)
{
    auto *item = new QListWidgetItem(text, m_list);
    item->setData(addressRole, address);
    item->setData(labelRole, label);
}

void ConnectPage::scanUsb()
{
    m_hint->setText(tr("Use the USB port on the device (or on the wireless receiver). Close any "
                       "serial monitor first."));
    const QList<SerialPortInfo> ports = m_carriers.listPorts();
    for (const SerialPortInfo &port : ports) {
        addItem(port.likelyDevice ? tr("%1  – likely a Tallyforge device").arg(port.name)
                                  : port.name,
                port.path, port.name);
    }
    m_status->setText(
        ports.isEmpty()
            ? tr("No USB devices found. Plug the device in and press Scan again.")
            : tr("%1 USB port(s) found. Pick the Tallyforge device.").arg(ports.size()));
    const auto isLikely = [](const SerialPortInfo &port) { return port.likelyDevice; };
    if (std::count_if(ports.begin(), ports.end(), isLikely) == 1) {
        const auto likely = std::find_if(ports.begin(), ports.end(), isLikely);
        m_list->setCurrentRow(int(likely - ports.begin()));
    } else {
        m_list->setCurrentRow(ports.size() == 1 ? 0 : -1);
    }
}

void ConnectPage::scanBluetooth()
{
    m_hint->setText(tr("The device must be paired with this computer first. The 6-digit passkey is "
                       "on the device's label and in your Tallyforge account."));
    m_status->setText(tr("Looking for devices… (about 6 seconds)"));
    if (m_scanAgain->hasFocus()) {
        m_list->setFocus();
    }
    m_scanAgain->setEnabled(false);
    m_carriers.scanBluetooth(
        bluetoothScan, m_scans.guard([this](bool ok, const QList<BleDeviceInfo> &devices, int seen,
                                            const QString &code, const QString &message) {
            onBluetoothScanned(ok, devices, seen, code, message);
        }));
}

void ConnectPage::onBluetoothScanned(bool ok, const QList<BleDeviceInfo> &devices, int seen,
                                     const QString &code, const QString &message)
{
    m_scanAgain->setEnabled(true);
    if (!ok) {
        m_status->setText(failureText(code, message));
    } else if (!devices.isEmpty()) {
        for (const BleDeviceInfo &device : devices) {
            addItem(device.name, device.id, device.name);
        }
        m_status->setText(tr("%1 device(s) found.").arg(devices.size()));
        m_list->setCurrentRow(devices.size() == 1 ? 0 : -1);
    } else if (seen == 0) {
        m_status->setText(tr("No Bluetooth devices were seen at all. Check that Bluetooth is on."));
    } else {
        m_status->setText(tr("Bluetooth is working but no Tallyforge device is in range. Move "
                             "closer and scan again."));
    }
    announce(m_status, m_status->text(), false);
}

void ConnectPage::onRowChanged(int row)
{
    if (!m_network->isChecked()) {
        m_connect->setEnabled(row >= 0);
    }
}

void ConnectPage::onHostChanged(const QString &text)
{
    if (m_network->isChecked()) {
        m_connect->setEnabled(!normalizeLanHost(text).isEmpty());
    }
}

void ConnectPage::choose()
{
    if (m_network->isChecked()) {
        chooseOnNetwork();
    } else if (const QListWidgetItem *item = m_list->currentItem()) {
        Q_EMIT connectRequested({m_usb->isChecked() ? u"usb"_s : u"ble"_s,
                                 item->data(addressRole).toString(),
                                 item->data(labelRole).toString()});
    }
}

// The number of a device that was set up before leads to the address that it had then.
void ConnectPage::chooseOnNetwork()
{
    const QString typed = m_host->currentText();
    QString host = normalizeLanHost(typed);
    if (host.isEmpty()) {
        return;
    }
    const int known = m_host->findText(typed.trimmed(), Qt::MatchFixedString);
    if (const QString saved = m_host->itemData(known).toString(); !saved.isEmpty()) {
        host = saved;
    }
    Q_EMIT connectRequested({u"lan"_s, host, host});
}

} // namespace tallyforge
