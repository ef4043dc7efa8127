// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/DeviceSession.h"

#include <QJsonObject>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>

namespace tallyforge {

class LiveData;
class PortalClient;
class TlsFeed;
struct LanDevice;
struct PortalResult;

/// Decides which one route feeds the live data, and says in one line of text how that goes. A route
/// stays until another is chosen; a change of route clears the live data, so that the scores of one
/// device never show under the name of another. Main thread.
class SourceManager final : public QObject
{
    Q_OBJECT

public:
    enum class Mode {
        None = 0,
        Cloud = 1,
        Lan = 2,
        Session = 3,
    };
    Q_ENUM(Mode)

    /// None of the services is owned; all must outlive the manager.
    SourceManager(PortalClient *portal, LiveData *live, QObject *parent);
    ~SourceManager() override;

    /// Follows a device of the account through the portal.
    void useCloud(const QString &deviceId);
    /// Follows a device through its feed on the local network.
    void useLan(const QString &deviceId, const LanDevice &device);
    /// This device has another address or token now. A route to it over the network goes on with
    /// them.
    void updateLan(const QString &deviceId, const LanDevice &device);
    /// Follows the device of a session, over whatever link that has, until another route is chosen.
    /// A caller that is done with the session makes it the manager's child; see sessionLeft().
    void useSession(DeviceSession *session, const QString &label);
    /// The session that is followed, null for none. Its owner may use it besides, and be its parent
    /// meanwhile.
    [[nodiscard]] DeviceSession *session() const { return m_session; }
    /// To be called when the followed session has been stopped, of which it says nothing itself.
    void sessionStopped();

    [[nodiscard]] Mode mode() const { return m_mode; }
    [[nodiscard]] QString deviceId() const { return m_deviceId; }
    /// The device's name as the status texts show it.
    [[nodiscard]] QString label() const { return m_label; }
    /// Whether data is arriving now.
    [[nodiscard]] bool isLive() const { return m_isLive; }
    /// One line for the user.
    [[nodiscard]] QString statusText() const { return m_statusText; }

Q_SIGNALS:
    /// isLive(), statusText() or the route has changed.
    void statusChanged();
    /// Another route has been chosen, and a session that is the manager's child feeds nothing any
    /// more. The receiver takes it over, because it may still carry a tunnel, or ends it.
    void sessionLeft(tallyforge::DeviceSession *session);

private:
    /// What is to be told of a change of route, once the new one is wired.
    struct Announcement
    {
        QPointer<DeviceSession> left; ///< the session of the old route, if it had one
        bool isOtherRoute;            ///< by its mode, device, name or session
    };

    [[nodiscard]] Announcement beginRoute(Mode mode, const QString &deviceId, const QString &label,
                                          DeviceSession *session = nullptr);
    void announce(const Announcement &news, const QString &text);
    void setStatus(bool live, const QString &text);
    void pollCloud();
    void onCloudReply(const PortalResult &result);
    void onCloudFailure(const PortalResult &result);
    void setPollInterval(std::chrono::milliseconds interval);
    void onSignedInChanged(bool signedIn);
    void onFeedEnvelope(const QJsonObject &envelope);
    void onFeedConnectedChanged(bool connected, const QString &reason);
    void onSessionEnvelope(const QJsonObject &envelope);
    void onSessionStateChanged(DeviceSession::State state, const QString &message);

    PortalClient *const m_portal;
    LiveData *const m_live;
    Mode m_mode = Mode::None;
    QString m_deviceId;
    QString m_label;
    bool m_isLive = false;
    QString m_statusText;
    QTimer m_pollTimer;
    bool m_pollInFlight = false;
    int m_failCount = 0;
    Generation m_generation; // of the route: a reply to an older one is dropped
    TlsFeed *m_feed;
    QPointer<DeviceSession> m_session; // of the present route
    bool m_sessionUp = false;          // as far as it has told
};

} // namespace tallyforge
