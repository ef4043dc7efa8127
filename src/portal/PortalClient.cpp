// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "portal/PortalClient.h"

#include "common/BuildConfig.h"
#include "portal/PortalJar.h"

#include <QJsonDocument>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds transferLimit{20000}; // without any progress of a request
constexpr std::chrono::milliseconds wholeLimit{60000};    // to the last byte of its reply

} // namespace

PortalClient::PortalClient(const QString &baseUrl, QObject *parent)
    : QObject(parent)
    , m_baseUrl(baseUrl)
    , m_jar(new Jar(this))
{
    m_network.setCookieJar(m_jar);
    m_jar->setParent(this); // the manager has made it its own
}

PortalClient::~PortalClient() = default;

void PortalClient::setSessionFile(const QString &path)
{
    m_jar->setSessionFile(path);
    m_jar->load();
}

void PortalClient::request(const QString &verb, const QString &path, const QJsonObject *body,
                           const Callback &callback, bool tracksSession)
{
    const PortalCall *call = send(PortalCall::Kind::InSession, verb, path, body);
    connect(call, &PortalCall::finished, this,
            [this, callback, tracksSession](const PortalResult &result) {
                if (result.status == 401 && tracksSession) {
                    setSignedIn(false);
                }
                if (callback) {
                    callback(result);
                }
            });
}

PortalCall *PortalClient::send(PortalCall::Kind kind, const QString &verb, const QString &path,
                               const QJsonObject *body)
{
    QNetworkRequest request(QUrl(m_baseUrl + path, QUrl::TolerantMode));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    request.setRawHeader("Accept", "application/json");
    request.setRawHeader("User-Agent", "Tallyforge-OBS/" + build_config::version().toUtf8());
    request.setTransferTimeout(transferLimit);
    // Elsewhere a redirected sign-in would bring the password.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::SameOriginRedirectPolicy);
    if (kind == PortalCall::Kind::SignOut) { // the next session has its own cookies by then
        request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    }

    const QByteArray bytes =
        body ? QJsonDocument(*body).toJson(QJsonDocument::Compact) : QByteArray();
    QNetworkReply *reply = nullptr;
    if (verb == "GET"_L1) {
        reply = m_network.get(request);
    } else if (verb == "POST"_L1) {
        reply = m_network.post(request, bytes);
    } else if (verb == "PUT"_L1) {
        reply = m_network.put(request, bytes);
    } else {
        reply = m_network.sendCustomRequest(request, verb.toUtf8(), bytes);
    }
    return new PortalCall(kind, reply, wholeLimit, this);
}

void PortalClient::endCalls(PortalCall::Kind kind)
{
    const QList<PortalCall *> calls = findChildren<PortalCall *>(Qt::FindDirectChildrenOnly);
    for (PortalCall *call : calls) {
        if (call->kind() == kind) {
            call->endWithSession();
        }
    }
}

QString PortalClient::friendly(int status, const QString &code, const QString &detail)
{
    const auto codeIs = [&code](const char *word) { return code == QLatin1StringView(word); };
    if (codeIs("invalid_credentials")) {
        return tr("That email and password did not match. Check them and try again.");
    }
    if (codeIs("invalid_totp_code")) {
        return tr("That code was not accepted. Enter the current 6-digit code from your "
                  "authenticator app.");
    }
    if (status == 429 || codeIs("rate_limited")) {
        return tr("Too many attempts. Wait a minute and try again.");
    }
    if (status == 504 || codeIs("device_unreachable_or_timeout")) {
        return tr("The device did not answer. Check that it is powered on and online.");
    }
    if (status == 502 || codeIs("gateway_unreachable")) {
        return tr("The Tallyforge service could not reach the live data feed. Try again shortly.");
    }
    if (codeIs("device_not_found_or_not_owned") || codeIs("claim_code_device_mismatch")) {
        return tr("That device is not on this account.");
    }
    if (status == 401 || codeIs("not_authenticated")) {
        return tr("You have been signed out. Sign in again.");
    }
    if (status == 0) {
        return tr("Could not reach Tallyforge. Check your internet connection.");
    }
    if (status == 403) {
        return tr("Your account role is not allowed to do that.");
    }
    return detail.isEmpty() ? tr("Tallyforge returned an error (%1).").arg(status) : detail;
}

void PortalClient::signIn(const QString &email, const QString &password, const Callback &callback)
{
    endCalls(PortalCall::Kind::SignIn); // the user's newest wish counts
    const QJsonObject body{{u"email"_s, email.trimmed()}, {u"password"_s, password}};
    tryToSignIn(PortalCall::Kind::SignIn, u"POST"_s, u"/auth/login"_s, &body, true, callback);
}

void PortalClient::signInWithCode(const QString &challengeId, const QString &code,
                                  const Callback &callback)
{
    endCalls(PortalCall::Kind::SignIn);
    const QJsonObject body{{u"challenge_id"_s, challengeId}, {u"code"_s, code.trimmed()}};
    tryToSignIn(PortalCall::Kind::SignIn, u"POST"_s, u"/auth/login/totp"_s, &body, false, callback);
}

void PortalClient::restoreSession(const Callback &callback)
{
    tryToSignIn(PortalCall::Kind::Restore, u"GET"_s, u"/auth/me"_s, nullptr, false,
                [this, callback](const PortalResult &result) {
                    if (result.status == 401) {
                        m_jar->wipe();
                    }
                    if (callback) {
                        callback(result);
                    }
                });
}

void PortalClient::tryToSignIn(PortalCall::Kind kind, const QString &verb, const QString &path,
                               const QJsonObject *body, bool codeMayFollow,
                               const Callback &callback)
{
    const PortalCall *call = send(kind, verb, path, body);
    connect(call, &PortalCall::finished, this,
            [this, kind, codeMayFollow, callback](const PortalResult &result) {
                const bool asksForCode =
                    codeMayFollow && result.data.value("totp_required"_L1).toBool();
                if (result.ok && !asksForCode) {
                    if (kind != PortalCall::Kind::Restore) { // the user's own sign-in goes on
                        endCalls(PortalCall::Kind::SignIn);
                    }
                    endCalls(PortalCall::Kind::Restore);
                    endCalls(PortalCall::Kind::InSession);
                    finishSignIn(result);
                }
                if (callback) {
                    callback(result);
                }
            });
}

void PortalClient::finishSignIn(const PortalResult &result)
{
    const QJsonObject user = result.data.value("user"_L1).toObject();
    m_email = user.value("email"_L1).toString();
    m_role = user.value("role"_L1).toString();
    setSignedIn(true);
    m_jar->save();
}

void PortalClient::signOut()
{
    endCalls(PortalCall::Kind::InSession);
    endCalls(PortalCall::Kind::SignIn);
    endCalls(PortalCall::Kind::Restore);
    send(PortalCall::Kind::SignOut, u"POST"_s, u"/auth/logout"_s, nullptr);
    m_jar->wipe();
    m_email.clear();
    m_role.clear();
    setSignedIn(false);
}

void PortalClient::setSignedIn(bool signedIn)
{
    if (signedIn == m_signedIn) {
        return;
    }
    m_signedIn = signedIn;
    if (!signedIn) {
        endCalls(PortalCall::Kind::InSession);
    }
    Q_EMIT signedInChanged(signedIn);
}

} // namespace tallyforge
