// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/ServerGroup.h"

#include "core/HostedServer.h"
#include "plugin/App.h"
#include "ui/widgets/PassingWheel.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

class PortBox final : public PassingWheel<QSpinBox>
{
public:
    explicit PortBox(QWidget *parent)
        : PassingWheel(parent)
    {
        constexpr int lowest = 1024;
        constexpr int highest = 65535;
        setRange(lowest, highest);
        setKeyboardTracking(false); // a half-typed number is none yet
        setLocale(QLocale::c());    // the same digits as in every other program
    }
};

} // namespace

ServerGroup::ServerGroup(App &app, QWidget *parent)
    : Group(tr("Share live data with other programs"), parent)
    , m_app(app)
{
    setObjectName(u"tallyforgeServer"_s);
    m_enabled = new WrappingCheckBox(tr("Send scores over TCP"), this);
    m_enabled->setObjectName(u"tallyforgeServerEnabled"_s);
    column()->addWidget(m_enabled);
    addPort();
    m_allowNetwork = new WrappingCheckBox(tr("Let other computers on my network connect"), this);
    m_allowNetwork->setObjectName(u"tallyforgeServerAllowNetwork"_s);
    column()->addWidget(m_allowNetwork);
    m_status = hint({}, this);
    m_status->setObjectName(u"tallyforgeServerStatus"_s);
    column()->addWidget(m_status);

    connect(m_enabled, &QCheckBox::toggled, this, &ServerGroup::apply);
    connect(m_allowNetwork, &QCheckBox::toggled, this, &ServerGroup::apply);
    connect(m_port, &QSpinBox::editingFinished, this, &ServerGroup::apply);
}

void ServerGroup::addPort()
{
    auto *label = new QLabel(tr("Port"), this);
    m_port = new PortBox(this);
    m_port->setObjectName(u"tallyforgeServerPort"_s);
    label->setBuddy(m_port);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_port);
    row->addStretch();
    column()->addLayout(row);
}

// Applying disconnects every program, so it must not happen when the keyboard's focus only passes
// by. What failed to start is tried again.
void ServerGroup::apply()
{
    SettingsStore &settings = m_app.settings();
    const bool same = settings.serverEnabled() == m_enabled->isChecked() &&
                      settings.serverPort() == m_port->value() &&
                      settings.serverAllowNetwork() == m_allowNetwork->isChecked();
    if (same && m_app.server()->isListening() == settings.serverEnabled()) {
        return;
    }
    settings.setServerEnabled(m_enabled->isChecked());
    settings.setServerPort(m_port->value());
    settings.setServerAllowNetwork(m_allowNetwork->isChecked());
    m_app.applyServerSettings();
}

void ServerGroup::refresh()
{
    const QSignalBlocker enabledBlocker(m_enabled);
    const QSignalBlocker portBlocker(m_port);
    const QSignalBlocker networkBlocker(m_allowNetwork);
    const SettingsStore &settings = m_app.settings();
    m_enabled->setChecked(settings.serverEnabled());
    if (const int port = settings.serverPort(); m_storedPort != port) {
        m_storedPort = port;
        m_port->setValue(port);
    }
    m_allowNetwork->setChecked(settings.serverAllowNetwork());
    m_status->setText(statusText());
}

QString ServerGroup::statusText() const
{
    const SettingsStore &settings = m_app.settings();
    const HostedServer &server = *m_app.server();
    if (!settings.serverEnabled()) {
        return tr("Off.");
    }
    if (!server.isListening()) {
        return tr("Could not start - port %1 may be in use. Try another port.")
            .arg(settings.serverPort());
    }
    const QString address =
        settings.serverAllowNetwork() ? tr("this computer's address") : u"127.0.0.1"_s;
    return tr("Connect to %1:%2 and read one JSON line per update. %3 connected.")
        .arg(address, QString::number(server.port()), QString::number(server.clientCount()));
}

} // namespace tallyforge
