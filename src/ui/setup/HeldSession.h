// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QPointer>
#include <QString>

class QObject;

namespace tallyforge {

class App;
class DeviceLink;
class DeviceSession;
struct DeviceChoice;

/// The one session that the setup dialog works with. The dialog has made it, or has borrowed it
/// from the live data, whose scores go on meanwhile; a borrowed one is given back at the end. The
/// dialog is the session's parent as long as it is held, so that a change of route doesn't take it
/// away.
class HeldSession
{
public:
    /// owner becomes the session's parent; its connections with the session end with its use.
    HeldSession(App &app, QObject *owner);

    [[nodiscard]] DeviceSession *get() const { return m_session; }
    /// Whether the live data follow the session.
    [[nodiscard]] bool isLive() const;

    /// Makes a session over a link, which it takes over.
    DeviceSession *open(DeviceLink *link);
    /// Holds the session that the live data follow if that is with this device, else returns null.
    DeviceSession *borrow(const DeviceChoice &choice);

    /// Ends the use without a wish of the user's to stop the scores: a session that brings them
    /// goes on if it does so now, any other one ends.
    void cancel();
    /// Ends the session, as the user wishes.
    void disconnect();
    /// Ends the use because the dialog goes: a session that the live data follow, or that lends its
    /// device this computer's internet, goes on.
    void leave();
    /// Has the live data follow the session under a name, from the beginning if they don't yet.
    void giveToLiveData(const QString &name);

private:
    [[nodiscard]] QPointer<DeviceSession> take();
    void giveBack(const QPointer<DeviceSession> &session);

    const QPointer<App> m_app;
    QObject *const m_owner;
    QPointer<DeviceSession> m_session;
};

} // namespace tallyforge
