// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "portal/PortalCall.h"
#include "portal/PortalTypes.h"

#include <QList>
#include <QNetworkAccessManager>
#include <QObject>

#include <functional>

namespace tallyforge {

/// The client of the portal's REST API: sign-in with a session that outlasts the program, and the
/// account's devices and graphics. Every call ends in exactly one call of its callback on the main
/// thread, a time-out included, unless the client is destroyed first; a callback may be empty.
///
/// A reply belongs to the session under which it was asked. When that session ends, by a sign-out,
/// a 401 or the next sign-in, its calls under way are given up, and their callbacks get a failure
/// of the code PortalResult::sessionEndedCode. The same happens to a sign-in under way when the
/// user asks for another one, when another one is accepted, and at a sign-out.
///
/// Main thread only; nothing is logged here.
class PortalClient final : public QObject
{
    Q_OBJECT

public:
    using Callback = std::function<void(const PortalResult &)>;
    class Jar;

    /// baseUrl is an origin without a trailing slash.
    explicit PortalClient(const QString &baseUrl, QObject *parent = nullptr);
    ~PortalClient() override;

    /// Sets where the session is kept, and loads the one that is there.
    void setSessionFile(const QString &path);

    [[nodiscard]] QString baseUrl() const { return m_baseUrl; }
    [[nodiscard]] bool signedIn() const { return m_signedIn; }
    [[nodiscard]] QString email() const { return m_email; }
    [[nodiscard]] QString role() const { return m_role; }

    /// One call to a path below the base address. body may be null. With tracksSession an answer of
    /// 401 means that the session has ended: the client is signed out, the cookies stay.
    void request(const QString &verb, const QString &path, const QJsonObject *body,
                 const Callback &callback, bool tracksSession);

    /// The sentence that tells the user of a failure.
    [[nodiscard]] static QString friendly(int status, const QString &code, const QString &detail);

    /// Signs in. When the reply's "totp_required" is true the client isn't signed in yet: the
    /// reply's "challenge_id" goes into signInWithCode().
    void signIn(const QString &email, const QString &password, const Callback &callback);
    void signInWithCode(const QString &challengeId, const QString &code, const Callback &callback);
    /// Signs in by the cookies of an earlier run. An answer of 401 removes them, no answer doesn't.
    void restoreSession(const Callback &callback);
    /// Ends the session here at once, whether or not the portal can be reached.
    void signOut();

    void listDevices(const Callback &callback);
    /// The device's live data envelope.
    void deviceState(const QString &deviceId, const Callback &callback);
    /// command goes into the path as it is.
    void sendCommand(const QString &deviceId, const QString &command, const QJsonObject &args,
                     const Callback &callback);
    void setConfig(const QString &deviceId, const QJsonObject &config, const Callback &callback);
    /// via is "usb", "ble" or "manual"; an empty code isn't sent.
    void linkDevice(const QString &deviceId, const QString &code, const QString &via,
                    const Callback &callback);
    void revealPairing(const QString &deviceId, const Callback &callback);
    void savePairing(const QString &deviceId, const QString &password, const Callback &callback);
    void listGraphicsOutputs(const Callback &callback);

    /// The devices of a reply to listDevices(); entries without an id are left out.
    [[nodiscard]] static QList<PortalDevice> parseDevices(const QJsonObject &object);
    /// The outputs of a reply to listGraphicsOutputs(); entries without an id or a share token are
    /// left out.
    [[nodiscard]] static QList<GraphicsOutput> parseOutputs(const QJsonObject &object,
                                                            const QString &baseUrl);

Q_SIGNALS:
    void signedInChanged(bool signedIn);

private:
    PortalCall *send(PortalCall::Kind kind, const QString &verb, const QString &path,
                     const QJsonObject *body);
    void tryToSignIn(PortalCall::Kind kind, const QString &verb, const QString &path,
                     const QJsonObject *body, bool codeMayFollow, const Callback &callback);
    void endCalls(PortalCall::Kind kind);
    void finishSignIn(const PortalResult &result);
    void setSignedIn(bool signedIn);

    const QString m_baseUrl;
    QNetworkAccessManager m_network;
    Jar *const m_jar; // child of the client
    bool m_signedIn = false;
    QString m_email;
    QString m_role;
};

} // namespace tallyforge
