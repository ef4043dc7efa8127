// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/WirelessGroup.h"

#include "ui/widgets/TextField.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QFormLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

WirelessGroup::WirelessGroup(QWidget *parent)
    : Group(tr("Wi-Fi or Tallyforge wireless receiver"), parent)
    , m_status(new ThemedLabel(this))
    , m_form(new QWidget(this))
{
    setObjectName(u"tallyforgeWireless"_s);
    m_status->setObjectName(u"tallyforgeWirelessStatus"_s);
    addForm();
    m_action = new WrappingButton({}, this);
    m_action->setObjectName(u"tallyforgeWirelessAction"_s);
    m_action->setAutoDefault(false);
    column()->addWidget(m_status);
    column()->addWidget(m_form);
    column()->addWidget(m_action);
    connect(m_action, &QPushButton::clicked, this, &WirelessGroup::actionWanted);
    m_form->hide();
    hide();
}

void WirelessGroup::addForm()
{
    m_address = new TextField(u"tallyforgeReceiverAddress"_s,
                              tr("aa:bb:cc:dd:ee:ff (printed on the receiver)"), m_form);
    m_key = new TextField(u"tallyforgeReceiverKey"_s,
                          tr("32-character pairing key, or leave empty to make a new one"), m_form);
    auto *rows = new QFormLayout(m_form);
    rows->setContentsMargins({});
    rows->setRowWrapPolicy(QFormLayout::WrapLongRows);
    const auto addRow = [rows](const QString &label, QLineEdit *field) {
        rows->addRow(label, field);
        field->setAccessibleName(label); // its placeholder only explains
    };
    addRow(tr("Receiver address"), m_address);
    addRow(tr("Pairing key"), m_key);
}

void WirelessGroup::showLink(const WirelessLink &link)
{
    m_link = link;
    m_form->setVisible(m_formWanted && !link.transmitting && !link.paired);
    m_status->setText(situation());
    m_action->setText(action());
    setVisible(link.available);
}

QString WirelessGroup::situation() const
{
    const QString peer = m_link.peerMac.isEmpty() ? QString() : u" (%1)"_s.arg(m_link.peerMac);
    if (m_link.transmitting) {
        const QString text = tr("This device is sending its scores to a Tallyforge wireless "
                                "receiver%1, so its Wi-Fi is switched off.")
                                 .arg(peer);
        return m_link.startError.isEmpty()
                   ? text
                   : text + u"\n\n"_s +
                         tr("The wireless transmitter could not start: %1").arg(m_link.startError);
    }
    if (m_link.paired) {
        return tr("This device connects over Wi-Fi. It is also paired with a Tallyforge wireless "
                  "receiver%1, so it can send its scores there instead.")
            .arg(peer);
    }
    return tr("This device connects over Wi-Fi. If the venue has no Wi-Fi it can send its scores "
              "to a Tallyforge wireless receiver instead.");
}

QString WirelessGroup::action() const
{
    if (m_link.transmitting) {
        return tr("Switch off the wireless transmitter and use Wi-Fi");
    }
    if (m_link.paired) {
        return tr("Use the wireless receiver instead of Wi-Fi");
    }
    return m_formWanted ? tr("Switch to the wireless receiver and restart")
                        : tr("Set up a Tallyforge wireless receiver instead of Wi-Fi…");
}

void WirelessGroup::hideForRestart(bool transmitting)
{
    m_link.transmitting = transmitting;
    if (transmitting) {
        m_formWanted = false;
        m_form->hide();
    }
    hide();
}

bool WirelessGroup::askForReceiver()
{
    if (m_formWanted) {
        return false;
    }
    m_formWanted = true;
    showLink(WirelessLink(m_link));
    m_address->setFocus();
    return true;
}

QString WirelessGroup::address() const
{
    return m_address->text().trimmed();
}

QString WirelessGroup::key() const
{
    return m_key->text().trimmed();
}

void WirelessGroup::setBusy(bool busy)
{
    m_action->setEnabled(!busy);
}

} // namespace tallyforge
