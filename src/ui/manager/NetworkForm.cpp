// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/NetworkForm.h"

#include "ui/widgets/ElidingComboBox.h"
#include "ui/widgets/PageBuilders.h"
#include "ui/widgets/TextField.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

NetworkForm::NetworkForm(QWidget *parent)
    : QWidget(parent)
    , m_network(new ElidingComboBox(this))
    , m_password(new TextField(u"tallyforgeWifiPassword"_s, tr("Wi-Fi password"), this))
    , m_scan(new WrappingButton(tr("Scan for networks"), this))
    , m_join(new WrappingButton(tr("Connect to this network"), this))
{
    setObjectName(u"tallyforgeNetworks"_s);
    m_network->setObjectName(u"tallyforgeNetwork"_s);
    m_network->setAccessibleName(tr("Network name"));
    m_network->setLineEdit(new QLineEdit(m_network));
    m_network->setInsertPolicy(QComboBox::NoInsert);
    m_network->setCompleter(nullptr); // it would make a scanned name of a typed one
    m_network->lineEdit()->setPlaceholderText(tr("Network name"));
    m_password->setEchoMode(QLineEdit::Password);
    m_scan->setObjectName(u"tallyforgeScanNetworks"_s);
    m_scan->setAutoDefault(false);
    m_join->setObjectName(u"tallyforgeJoinNetwork"_s);
    m_join->setDefault(true);

    auto *intro = new ThemedLabel(this);
    intro->setText(tr("Pick the venue's network. The device uses it to reach your account and the "
                      "internet."));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    for (QWidget *widget :
         std::initializer_list<QWidget *>{intro, m_network, m_password, m_scan, m_join}) {
        column->addWidget(widget);
    }
    pressOnReturn(m_network->lineEdit(), m_join);
    pressOnReturn(m_password, m_join);
    connect(m_scan, &QPushButton::clicked, this, &NetworkForm::scanWanted);
    connect(m_join, &QPushButton::clicked, this, &NetworkForm::joinWanted);
}

// A dialog has one default button at a time, and another page's may have become it meanwhile.
void NetworkForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_join->setDefault(true);
}

void NetworkForm::showNetworks(const QList<WifiNetwork> &networks)
{
    const QString typed = m_network->currentText();
    const QString picked = m_network->currentData().toString();
    m_network->clear();
    for (const WifiNetwork &network : networks) {
        m_network->addItem(tr("%1   (%2 dBm)").arg(network.ssid).arg(network.rssi), network.ssid);
    }
    if (typed.isEmpty()) {
        return;
    }
    // The text of a picked network holds its signal as well, which must not become part of a name.
    const bool isPicked = !picked.isEmpty() && typed.startsWith(picked + u"   ("_s);
    const int place =
        m_network->findData(picked, Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (isPicked && place >= 0) {
        m_network->setCurrentIndex(place);
    }
    m_network->setEditText(isPicked && place < 0 ? picked : typed);
}

QString NetworkForm::network() const
{
    const QString picked = m_network->currentData().toString();
    const QString text = m_network->currentText();
    return !picked.isEmpty() && text.startsWith(picked) ? picked : text.trimmed();
}

QString NetworkForm::password() const
{
    return m_password->text();
}

void NetworkForm::setScanning(bool scanning)
{
    m_scan->setEnabled(!scanning);
}

void NetworkForm::setJoining(bool joining)
{
    m_join->setEnabled(!joining);
}

} // namespace tallyforge
