// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/DeviceTypes.h"
#include "device/RpcClient.h"
#include "device/StatePoll.h"

#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace tallyforge {

class DeviceLink;

/// One device over any link: opens it, signs in, keeps the device's status, and asks for its live
/// data where the link doesn't bring them. The session never starts over by itself after the end of
/// a connection; its owner may call start() again at any time.
///
/// All callbacks come on the main thread, exactly once. They may be empty, use the session again or
/// delete it. The deletion of a session fails its calls under way; their callbacks must not delete
/// it a second time (deleteLater() never does). Two callbacks never come after the deletion: that
/// of a Wi-Fi verification that waits for its next look, and that of an operation whose own signal
/// or progress text has led to the deletion. Error texts are sentences for the user, empty on
/// success.
class DeviceSession final : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle,             ///< not started, or stopped
        Connecting,       ///< the link is opening
        SigningIn,        ///< a password is being tried
        NeedsPassword,    ///< none of the passwords was right
        NeedsNewPassword, ///< signed in, but the device wants a new password first
        Ready,
        Lost,       ///< the link went down unexpectedly
        Error,      ///< the link or the sign-in failed for another reason; see detail()
        Restarting, ///< the link went down because the device was asked to restart
    };
    Q_ENUM(State)

    using Done = std::function<void(bool ok, const QString &error)>;
    using Progress = std::function<void(const QString &text)>;

    /// Takes the link over.
    DeviceSession(DeviceLink *link, QObject *parent);
    ~DeviceSession() override;

    /// Opens the link and tries these passwords in order. Calls under way fail with "disconnected";
    /// if one of their callbacks starts or stops the session itself, that holds.
    void start(const QList<QString> &candidates);
    /// Turns a session with a wireless receiver into one with the device that is paired with it.
    void manageViaReceiver(const QList<QString> &candidates);
    /// The user's answer to State::NeedsPassword.
    void submitPassword(const QString &password);
    void refreshStatus(const Done &callback);
    /// Ends everything without a further signal; calls under way fail with "disconnected", and one
    /// of their callbacks may start the session over.
    void stop();

    [[nodiscard]] State state() const { return m_state; }
    /// The last error, for the user.
    [[nodiscard]] QString detail() const { return m_detail; }
    /// The device's last "getStatus".
    [[nodiscard]] QJsonObject status() const { return m_status; }
    [[nodiscard]] DeviceLink *link() const { return m_link; }
    [[nodiscard]] RpcClient *rpc() { return &m_rpc; }
    [[nodiscard]] bool mustChangePassword() const { return m_mustChangePassword; }
    /// The link ends at a wireless receiver, and the session is with that.
    [[nodiscard]] bool receiverMode() const { return m_receiverMode; }
    /// The session is with the device behind a wireless receiver, or on the way to it.
    [[nodiscard]] bool viaReceiver() const { return m_viaReceiver; }
    /// The device's radio transmits to a receiver, as far as is known.
    [[nodiscard]] bool wirelessActive() const { return m_wirelessActive; }
    [[nodiscard]] QString deviceId() const;
    [[nodiscard]] QString firmware() const;
    /// The device's address on its Wi-Fi, empty without one.
    [[nodiscard]] QString wifiIp() const;

    void changePassword(const QString &current, const QString &next, const Done &callback);
    /// The networks, strongest first, each name once. The note tells why there may be none.
    void scanWifi(const std::function<void(bool ok, const QList<WifiNetwork> &networks,
                                           const QString &note)> &callback);
    void wirelessLink(const std::function<void(const WirelessLink &link)> &callback);
    /// Pairs the device with a receiver and restarts it; the key is the one that the device
    /// has made, if it was to.
    void enableWirelessTransmitter(
        const QString &peerMac, const QString &key, bool generateKey,
        const std::function<void(bool ok, const QString &error, const QString &key)> &callback);
    void disableEspNowSender(const Done &callback);
    /// Hands Wi-Fi credentials over and follows, for up to 13 looks, whether the device joins.
    void configureWifi(const QString &ssid, const QString &pass, const Progress &progress,
                       const Done &done);
    /// The looks alone; attempt counts them from 0 on.
    void verifyWifi(const QString &ssid, int attempt, const Progress &progress, const Done &done);
    void listControllers(const std::function<void(bool ok, const QList<ControllerChoice> &choices,
                                                  const QString &error)> &callback);
    void getControllerConfig(const std::function<void(bool ok, const QJsonObject &config,
                                                      const QString &error)> &callback);
    void setController(const ControllerChoice &choice, const Done &callback);
    /// The access token of the device's feed on the local network: a secret.
    void ensureApiToken(
        const std::function<void(bool ok, const QString &token, const QString &error)> &callback);
    /// Restarts the device. That it falls silent or hangs up over it counts as success.
    void reboot(const Done &callback);

Q_SIGNALS:
    void stateChanged(tallyforge::DeviceSession::State state, const QString &detail);
    /// Live data, whichever way they came.
    void envelope(const QJsonObject &env);
    /// status() is new.
    void statusUpdated();

private:
    void setState(State state, QString detail);
    void endConnection();
    void signIn();
    [[nodiscard]] bool hangUp();
    void onLinkOpened(const QJsonObject &info);
    void onLinkClosed(const QString &reason);
    void onLinkFailed(const QString &message);
    void tryNextPassword();
    void onLoginReply(const QString &password, const RpcResult &result);
    void afterLogin(const RpcResult &result);
    void becomeReady();
    void onPollUnauthorized();
    void onPollSilent();
    void judgeWifi(const QString &ssid, int attempt, const Progress &progress, const Done &done);

    DeviceLink *const m_link; // child
    Generation m_generation;  // begins with each start and each end of the connection
    RpcClient m_rpc;
    StatePoll m_poll; // runs in State::Ready
    State m_state = State::Idle;
    QString m_detail;
    QJsonObject m_status;
    QJsonObject m_linkInfo;
    QList<QString> m_candidates; // passwords still to be tried
    QString m_password;          // the one that worked
    bool m_mustChangePassword = false;
    bool m_receiverMode = false;
    bool m_viaReceiver = false; // the session reaches a device through its receiver
    bool m_wirelessActive = false;
    bool m_restarting = false;
};

} // namespace tallyforge
