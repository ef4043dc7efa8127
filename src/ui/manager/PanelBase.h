// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceSession.h"
#include "ui/widgets/Question.h"

#include <QPointer>
#include <QWidget>

class QBoxLayout;

namespace tallyforge {

class MessageLine;

/// What all panels about one device share: the session, which may end before them, a message line,
/// and a guarded way to call the device. A panel asks the device nothing before its refresh().
class PanelBase : public QWidget
{
    Q_OBJECT

public:
    /// The session isn't owned.
    PanelBase(DeviceSession *session, QWidget *parent);

    /// Loads anew what the panel shows.
    virtual void refresh();

protected:
    void setMessage(const QString &text, bool error);
    /// The same for what a press of a button brings: the line comes into view, because it may stand
    /// below what a small window shows.
    void tell(const QString &text, bool error);
    /// Whether there still is a session; if not, the panel says so.
    [[nodiscard]] bool checkSession();
    /// Calls a method of the device. The callback comes unless the panel has gone; without a
    /// session the panel says so, returns false, and no callback comes.
    bool call(const QString &method, const QJsonObject &params, const RpcClient::Callback &callback,
              int timeoutMs);
    /// Asks the user, see askToConfirm(). The question's title names the device.
    void confirm(const QString &title, const QString &text, const std::function<void()> &yes,
                 Severity severity = Severity::Usual);
    /// The same title for a question of another kind.
    [[nodiscard]] QString titleWithDevice(const QString &title) const;
    [[nodiscard]] DeviceSession *session() const { return m_session; }
    /// Each panel places it in its own layout.
    [[nodiscard]] MessageLine *messageLine() const { return m_message; }

private:
    const QPointer<DeviceSession> m_session;
    MessageLine *const m_message;
};

} // namespace tallyforge
