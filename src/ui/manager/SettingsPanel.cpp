// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/SettingsPanel.h"

#include "ui/manager/ControllerGroup.h"
#include "ui/manager/SettingsForm.h"
#include "ui/manager/WirelessInputGroup.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/ScrolledColumn.h"
#include "ui/widgets/WrappingButton.h"

#include <QVBoxLayout>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int timeoutMs = 20000;
constexpr std::chrono::milliseconds reloadDelay{2500};
constexpr SettingsForm::Range ports{1, 65535};

} // namespace

SettingsPanel::SettingsPanel(DeviceSession *session, QWidget *parent)
    : PanelBase(session, parent)
{
    setObjectName(u"tallyforgeSettings"_s);
    QVBoxLayout *column = scrolledColumn(this);
    addConnections(column);
    m_controller = new ControllerGroup(column->parentWidget());
    column->addWidget(m_controller);
    m_wirelessInput = new WirelessInputGroup(column->parentWidget());
    column->addWidget(m_wirelessInput);
    addWirelessOutput(column);
    addEthernetBridge(column);
    addUsbTunnel(column);
    m_saveButton = new WrappingButton(tr("Save settings"), column->parentWidget());
    m_saveButton->setObjectName(u"tallyforgeSaveSettings"_s);
    m_saveButton->setDefault(true);
    column->addWidget(m_saveButton);
    column->addWidget(messageLine());
    column->addStretch();

    m_reload.setSingleShot(true);
    m_reload.setInterval(reloadDelay);
    connect(&m_reload, &QTimer::timeout, this, &SettingsPanel::refresh);
    connect(m_controller, &ControllerGroup::picked, this, [this] {
        m_wirelessInput->load(m_controller->maker(), m_controller->connection(), m_settings,
                              SettingsForm::Edits::Drop);
    });
    connect(m_saveButton, &QPushButton::clicked, this, &SettingsPanel::save);
}

SettingsForm *SettingsPanel::addForm(QVBoxLayout *column, const QString &title)
{
    auto *group = new Group(title, column->parentWidget());
    column->addWidget(group);
    auto *form = new SettingsForm(group);
    group->layout()->addWidget(form);
    m_forms.append(form);
    return form;
}

SettingsForm *SettingsPanel::addCheckableForm(QVBoxLayout *column, QLatin1StringView key,
                                              const QString &title)
{
    SettingsForm *form = addForm(column, title);
    auto *group = static_cast<QGroupBox *>(form->parentWidget());
    group->setObjectName(SettingsForm::inputName(key));
    group->setCheckable(true);
    form->bind(key, group, false);
    return form;
}

void SettingsPanel::addConnections(QVBoxLayout *column)
{
    SettingsForm *form = addForm(column, tr("Connections"));
    form->addCheck("http_endpoint_enabled"_L1,
                   tr("Allow scoreboard changes over the network (controller config API)"), true);
    form->addCheck("tcp_feed_enabled"_L1,
                   tr("Send live scores over the network (secure TCP, port 1010)"), true);
    form->addCheck("test_cloud_data_enabled"_L1, tr("Send test data to the cloud"), false);
}

void SettingsPanel::addWirelessOutput(QVBoxLayout *column)
{
    SettingsForm *form = addCheckableForm(column, "wireless_output_enabled"_L1,
                                          tr("Wireless output (send scores to a receiver)"));
    form->addNumber("wireless_output_network_id"_L1, tr("Network ID (1-20)"), {1, 20}, 1);
    form->addNumber("wireless_output_channel"_L1, tr("Channel (1-10)"), {1, 10}, 1);
}

void SettingsPanel::addEthernetBridge(QVBoxLayout *column)
{
    constexpr int usualPort = 1011;
    SettingsForm *form =
        addCheckableForm(column, "ethernet_bridge_output_enabled"_L1,
                         tr("Ethernet bridge output (send scores to a wired receiver)"));
    form->addText("ethernet_bridge_peer_host"_L1, tr("Receiver"),
                  tr("receiver address, e.g. tallyforge0042.local"));
    form->addNumber("ethernet_bridge_port"_L1, tr("TCP port"), ports, usualPort);
}

void SettingsPanel::addUsbTunnel(QVBoxLayout *column)
{
    constexpr int usualPort = 18883;
    SettingsForm *form = addCheckableForm(column, "usb_tunnel_enabled"_L1,
                                          tr("Cloud over USB (use this computer's internet)"));
    form->addNumber("usb_tunnel_port"_L1, tr("Local port"), ports, usualPort);
}

// A dialog has one default button at a time, and another page's may have become it meanwhile.
void SettingsPanel::showEvent(QShowEvent *event)
{
    PanelBase::showEvent(event);
    m_saveButton->setDefault(true);
}

void SettingsPanel::refresh()
{
    m_loading.next();
    setMessage(tr("Loading…"), false);
    call(u"getControllerList"_s, {}, m_loading.guard([this](const RpcResult &result) {
        loadConfig(result.ok ? result.result.value("controllers"_L1).toArray() : QJsonArray());
    }),
         timeoutMs);
}

void SettingsPanel::loadConfig(const QJsonArray &controllers)
{
    call(u"getControllerConfig"_s, {},
         m_loading.guard([this, controllers](const RpcResult &result) {
             loadSettings(controllers, result.ok ? result.result : QJsonObject());
         }),
         timeoutMs);
}

void SettingsPanel::loadSettings(const QJsonArray &controllers, const QJsonObject &config)
{
    call(u"getSettings"_s, {},
         m_loading.guard([this, controllers, config](const RpcResult &result) {
             if (!result.ok) {
                 setMessage(result.errorMessage, true);
                 return;
             }
             m_settings = result.result;
             showAll(controllers, config);
         }),
         timeoutMs);
}

void SettingsPanel::showAll(const QJsonArray &controllers, const QJsonObject &config)
{
    for (SettingsForm *form : std::as_const(m_forms)) {
        form->load(m_settings, SettingsForm::Edits::Keep);
    }
    m_controller->load(controllers, config);
    m_wirelessInput->load(m_controller->maker(), m_controller->connection(), m_settings,
                          SettingsForm::Edits::Keep);
    setMessage(controllers.isEmpty() ? tr("The device did not list its controllers; scoreboard "
                                          "choices are unavailable.")
                                     : QString(),
               false);
}

QJsonObject SettingsPanel::values() const
{
    QVariantHash values{{u"mqtt_config_enabled"_s, true}}; // nobody switches the cloud's own off
    values.insert(m_controller->choice().toVariantHash());
    values.insert(m_wirelessInput->values().toVariantHash());
    for (const SettingsForm *form : m_forms) {
        values.insert(form->values().toVariantHash());
    }
    return QJsonObject::fromVariantHash(values);
}

void SettingsPanel::save()
{
    if (!m_controller->isComplete()) {
        tell(tr("Choose the scoreboard's maker, model, sport and connection first."), true);
        return;
    }
    m_reload.stop();
    m_loading.next(); // its answer would take the place of what is told here
    for (SettingsForm *form : std::as_const(m_forms)) {
        form->markSent();
    }
    m_wirelessInput->markSent();
    tell(tr("Saving…"), false);
    m_saveButton->setEnabled(!session()); // without a session there is no answer
    const QJsonObject sent = values();
    call(
        u"setSettings"_s, sent, [this, sent](const RpcResult &result) { onSaved(result, sent); },
        timeoutMs);
}

void SettingsPanel::onSaved(const RpcResult &result, const QJsonObject &sent)
{
    m_loading.next();
    m_saveButton->setEnabled(true);
    if (!result.ok) {
        tell(result.errorMessage, true);
        return;
    }
    for (auto setting = sent.begin(); setting != sent.end(); ++setting) {
        m_settings.insert(setting.key(), setting.value());
    }
    for (SettingsForm *form : std::as_const(m_forms)) {
        form->markSaved();
    }
    m_controller->markSaved(sent);
    m_wirelessInput->markSaved();
    tell(tr("Saved. The device is switching to the new settings."), false);
    m_reload.start();
}

} // namespace tallyforge
