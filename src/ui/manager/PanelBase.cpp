// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/PanelBase.h"

#include "ui/widgets/MessageLine.h"

#include <QScrollArea>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tallyforge {

PanelBase::PanelBase(DeviceSession *session, QWidget *parent)
    : QWidget(parent)
    , m_session(session)
    , m_message(new MessageLine(this))
{
    m_message->setObjectName(u"tallyforgeMessage"_s);
}

void PanelBase::refresh() {}

void PanelBase::setMessage(const QString &text, bool error)
{
    m_message->tell(text, error);
}

void PanelBase::tell(const QString &text, bool error)
{
    setMessage(text, error);
    QTimer::singleShot(0, m_message, [this] { // when the line has its place
        QWidget *above = m_message->parentWidget();
        while (above != nullptr && qobject_cast<QScrollArea *>(above) == nullptr) {
            above = above->parentWidget();
        }
        if (above != nullptr && !m_message->text().isEmpty()) {
            static_cast<QScrollArea *>(above)->ensureWidgetVisible(m_message);
        }
    });
}

bool PanelBase::checkSession()
{
    if (!m_session) {
        tell(tr("Not connected to a device."), true);
    }
    return !m_session.isNull();
}

bool PanelBase::call(const QString &method, const QJsonObject &params,
                     const RpcClient::Callback &callback, int timeoutMs)
{
    if (!checkSession()) {
        return false;
    }
    m_session->rpc()->call(
        method, params,
        [self = QPointer(this), callback](const RpcResult &result) {
            if (self) {
                callback(result);
            }
        },
        timeoutMs);
    return true;
}

void PanelBase::confirm(const QString &title, const QString &text, const std::function<void()> &yes,
                        Severity severity)
{
    askToConfirm(this, titleWithDevice(title), text, yes, severity);
}

QString PanelBase::titleWithDevice(const QString &title) const
{
    const QString device = m_session ? m_session->deviceId() : QString();
    return device.isEmpty() ? title : title + u" – "_s + device;
}

} // namespace tallyforge
