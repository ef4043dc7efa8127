// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/CloudPanel.h"

#include "device/usb/UsbLink.h"
#include "ui/manager/SharePanel.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/PageBuilders.h"
#include "ui/widgets/ScrolledColumn.h"
#include "ui/widgets/TextField.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int answerMs = 20000;

} // namespace

CloudPanel::CloudPanel(DeviceSession *session, SettingsStore &settings, QWidget *parent)
    : PanelBase(session, parent)
{
    constexpr int gap = 8; // pixels
    setObjectName(u"tallyforgeCloud"_s);
    QVBoxLayout *column = scrolledColumn(this);
    m_status = addText(column, u"tallyforgeCloudStatus"_s, {});
    const QPushButton *refreshButton =
        addButton(column, u"tallyforgeRefreshCloud"_s, tr("Refresh"));
    connect(refreshButton, &QPushButton::clicked, this, &CloudPanel::refresh);
    addShare(column, settings);
    addDeviceId(column);
    column->addSpacing(gap);
    const QPushButton *forget =
        addButton(column, u"tallyforgeForgetCloud"_s, tr("Forget cloud sign-in on this device…"));
    connect(forget, &QPushButton::clicked, this, &CloudPanel::askToForget);
    column->addWidget(messageLine());
    column->addStretch();
}

void CloudPanel::addShare(QBoxLayout *column, SettingsStore &settings)
{
    auto *share = new SharePanel(settings, column->parentWidget());
    column->addWidget(share);
    share->setLink(session() ? qobject_cast<UsbLink *>(session()->link()) : nullptr, false);
}

void CloudPanel::addDeviceId(QBoxLayout *column)
{
    addHeading(column, tr("Device ID"));
    addText(column, u"tallyforgeDeviceIdHint"_s,
            tr("Identifies this device in your Tallyforge account. Only change it if instructed by "
               "support."));
    m_deviceId = addField(column, u"tallyforgeDeviceId"_s, tr("Device ID, e.g. tallyforge0029"));
    QPushButton *save = addButton(column, u"tallyforgeSaveDeviceId"_s, tr("Save device ID"));
    connect(save, &QPushButton::clicked, this, &CloudPanel::saveDeviceId);
    pressOnReturn(m_deviceId, save);
}

// The answer takes the place of what stood in the field, but not of what is typed meanwhile.
void CloudPanel::refresh()
{
    m_deviceId->setModified(false);
    load();
}

void CloudPanel::load()
{
    call(u"getStatus"_s, {}, [this](const RpcResult &result) { showStatus(result); }, answerMs);
}

void CloudPanel::showStatus(const RpcResult &result)
{
    if (!result.ok) {
        m_status->setText({});
        return;
    }
    const bool isConnected = result.result.value("mqtt_connected"_L1).toBool();
    const QString route = result.result.value("mqtt_transport"_L1).toString();
    QString text = tr("Connected to the cloud: %1").arg(isConnected ? tr("yes") : tr("no"));
    if (!route.isEmpty()) {
        text += u'\n' + tr("Route: %1").arg(route);
    }
    m_status->setText(text);
    if (!m_deviceId->isModified()) {
        const QString id = result.result.value("device_id"_L1).toString();
        m_deviceId->setText(id);
    }
}

void CloudPanel::saveDeviceId()
{
    const QString id = m_deviceId->text().trimmed();
    if (id.isEmpty()) {
        return;
    }
    m_deviceId->setModified(false);
    call(
        u"setDeviceId"_s, {{u"device_id"_s, id}},
        [this](const RpcResult &result) {
            tell(result.ok ? tr("Saved.") : result.errorMessage, !result.ok);
            if (result.ok) {
                load();
                readDeviceId();
            }
        },
        answerMs);
}

// The session's own, which titles show.
void CloudPanel::readDeviceId()
{
    if (session() != nullptr) {
        session()->refreshStatus([self = QPointer(this)](bool ok, const QString &) {
            if (ok && self) {
                Q_EMIT self->deviceIdChanged();
            }
        });
    }
}

void CloudPanel::askToForget()
{
    const auto onAnswer = [this](const RpcResult &result) {
        tell(result.ok ? tr("Done. The device no longer has cloud credentials.")
                       : result.errorMessage,
             !result.ok);
        if (result.ok) {
            load();
        }
    };
    confirm(tr("Forget cloud sign-in"),
            tr("The device stops sending scores to the cloud until it is set up for it again. "
               "Continue?"),
            [this, onAnswer] { call(u"clearMqttConfig"_s, {}, onAnswer, answerMs); });
}

} // namespace tallyforge
