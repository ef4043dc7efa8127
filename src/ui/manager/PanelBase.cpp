// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/PanelBase.h"

#include "ui/widgets/MessageLine.h"

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

void PanelBase::call(const QString &method, const QJsonObject &params,
                     const RpcClient::Callback &callback, int timeoutMs)
{
    if (!m_session) {
        setMessage(tr("Not connected to a device."), true);
        return;
    }
    m_session->rpc()->call(
        method, params,
        [self = QPointer(this), callback](const RpcResult &result) {
            if (self) {
                callback(result);
            }
        },
        timeoutMs);
}

} // namespace tallyforge
