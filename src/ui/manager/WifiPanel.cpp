// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/WifiPanel.h"

#include "device/DeviceSession.h"
#include "ui/manager/NetworkForm.h"
#include "ui/manager/RestartBanner.h"
#include "ui/manager/WirelessGroup.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/ScrolledColumn.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

WifiPanel::WifiPanel(DeviceSession *session, QWidget *parent)
    : PanelBase(session, parent)
{
    setObjectName(u"tallyforgeWifi"_s);
    QVBoxLayout *column = scrolledColumn(this);
    m_wireless = new WirelessGroup(column->parentWidget());
    m_networks = new NetworkForm(column->parentWidget());
    m_banner = new RestartBanner(column->parentWidget());
    for (QWidget *widget :
         std::initializer_list<QWidget *>{m_wireless, m_networks, m_banner, messageLine()}) {
        column->addWidget(widget);
    }
    column->addStretch();
    connect(m_wireless, &WirelessGroup::actionWanted, this, &WifiPanel::linkAction);
    connect(m_networks, &NetworkForm::scanWanted, this, &WifiPanel::scan);
    connect(m_networks, &NetworkForm::joinWanted, this, &WifiPanel::apply);
}

bool WifiPanel::isRestarting() const
{
    return !m_banner->isHidden();
}

void WifiPanel::refresh()
{
    if (isRestarting()) {
        return;
    }
    loadLink([this] {
        if (!m_wireless->link().transmitting) {
            scan();
        }
    });
}

void WifiPanel::loadLink(const std::function<void()> &continuation)
{
    if (!session()) {
        continuation();
        return;
    }
    session()->wirelessLink([self = QPointer(this), continuation](const WirelessLink &link) {
        if (self && !self->isRestarting()) {
            self->m_wireless->showLink(link);
            self->m_networks->setEnabled(!link.transmitting);
            continuation();
        }
    });
}

void WifiPanel::scan()
{
    if (!session()) {
        return;
    }
    setMessage(tr("Scanning… this can take up to 15 seconds."), false);
    m_networks->setScanning(true);
    session()->scanWifi(
        [self = QPointer(this)](bool ok, const QList<WifiNetwork> &networks, const QString &error) {
            if (self) {
                self->onScan(ok, networks, error);
            }
        });
}

void WifiPanel::onScan(bool ok, const QList<WifiNetwork> &networks, const QString &error)
{
    m_networks->setScanning(false);
    if (!ok) {
        setMessage(error + u' ' + tr("You can still type the network name."), true);
        return;
    }
    m_networks->showNetworks(networks);
    if (!networks.isEmpty()) {
        setMessage(tr("%1 network(s) found.").arg(networks.size()), false);
    } else if (session() && session()->wirelessActive()) {
        setMessage({}, false); // the group tells why there are none
        loadLink([] {});
    } else {
        setMessage(tr("No networks found. Move the device closer to the router, or type the "
                      "network name."),
                   false);
    }
}

void WifiPanel::apply()
{
    if (!session()) {
        return;
    }
    const QString network = m_networks->network();
    if (network.isEmpty()) {
        tell(tr("Choose or type a network name first."), true);
        return;
    }
    tell(tr("Sending the network to the device…"), false);
    m_networks->setJoining(true);
    const auto progress = [self = QPointer(this)](const QString &text) {
        if (self) {
            self->tell(text, false);
        }
    };
    const auto done = [self = QPointer(this)](bool ok, const QString &text) {
        if (!self) {
            return;
        }
        self->m_networks->setJoining(false);
        self->tell(text, !ok);
        if (ok) {
            Q_EMIT self->joined(self->session() ? self->session()->wifiIp() : QString());
        }
    };
    session()->configureWifi(network, m_networks->password(), progress, done);
}

void WifiPanel::linkAction()
{
    if (!session()) {
        return;
    }
    const WirelessLink &link = m_wireless->link();
    if (link.transmitting) {
        askToStopTransmitter();
    } else if (link.paired) {
        askToTransmit({}, {}, false);
    } else if (!m_wireless->askForReceiver()) {
        const QString address = m_wireless->address();
        const QString key = m_wireless->key();
        if (address.isEmpty()) {
            tell(tr("Enter the receiver's address first. It is printed on the receiver."), true);
        } else {
            askToTransmit(address, key, key.isEmpty());
        }
    }
}

void WifiPanel::askToStopTransmitter()
{
    confirm(tr("Switch off the wireless transmitter"),
            tr("The device will stop sending its scores to the wireless receiver and restart "
               "so it can use Wi-Fi. The receiver's pairing is kept, so you can switch back "
               "later.\n\nContinue?"),
            [this] { stopTransmitter(); });
}

void WifiPanel::stopTransmitter()
{
    if (!session()) {
        return;
    }
    m_wireless->setBusy(true);
    tell(tr("Switching off the wireless transmitter…"), false);
    session()->disableEspNowSender([self = QPointer(this)](bool ok, const QString &error) {
        if (!self) {
            return;
        }
        self->m_wireless->setBusy(false);
        if (!ok) {
            self->tell(error, true);
            return;
        }
        self->m_wireless->hideForRestart(false);
        self->startRestartCountdown(tr("The device is restarting to use Wi-Fi."), {});
    });
}

void WifiPanel::askToTransmit(const QString &address, const QString &key, bool generate)
{
    confirm(tr("Use the wireless receiver"),
            tr("The device will stop using Wi-Fi and send its scores to the Tallyforge "
               "wireless receiver, then restart. Its scores reach the cloud through a "
               "computer connected to that receiver.\n\nMake sure the receiver is set up "
               "first - you can switch back over USB or Bluetooth.\n\nContinue?"),
            [this, address, key, generate] { transmit(address, key, generate); });
}

void WifiPanel::transmit(const QString &address, const QString &key, bool generate)
{
    if (!session()) {
        return;
    }
    m_wireless->setBusy(true);
    tell(tr("Switching to the wireless receiver…"), false);
    const auto done = [self = QPointer(this)](bool ok, const QString &error,
                                              const QString &newKey) {
        if (!self) {
            return;
        }
        self->m_wireless->setBusy(false);
        if (!ok) {
            self->tell(error, true);
            return;
        }
        self->m_wireless->hideForRestart(true);
        const QString note =
            newKey.isEmpty()
                ? QString()
                : tr("New pairing key - enter it on the receiver (shown only once):\n%1")
                      .arg(newKey);
        self->startRestartCountdown(tr("The device is restarting and will send its scores to the "
                                       "wireless receiver. Wi-Fi is off."),
                                    note);
    };
    session()->enableWirelessTransmitter(address, key, generate, done);
}

void WifiPanel::startRestartCountdown(const QString &headline, const QString &note)
{
    m_networks->setEnabled(false);
    setMessage({}, false);
    m_banner->start(headline, note);
}

} // namespace tallyforge
