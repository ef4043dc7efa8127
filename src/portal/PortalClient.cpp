// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "portal/PortalClient.h"

#include "common/BuildConfig.h"
#include "portal/PortalJar.h"

#include <QJsonDocument>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

bool isSuccess(int status)
{
    return status >= 200 && status <= 299;
}

// A failure's body is {"detail":{"error":code}}, {"detail":sentence} or {"error":code}.
QString readFailure(const QJsonObject &data, QString *code)
{
    const QJsonValue detail = data.value("detail"_L1);
    *code = detail.toObject().value("error"_L1).toString();
    if (code->isEmpty()) {
        *code = data.value("error"_L1).toString();
    }
    return detail.toString();
}

PortalResult readResult(QNetworkReply *reply)
{
    PortalResult result;
    // One that ran out of time in the middle has not been answered, whatever it began with.
    if (reply->error() != QNetworkReply::OperationCanceledError &&
        reply->error() != QNetworkReply::TimeoutError) {
        result.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    }
    if (reply->isReadable()) { // one that was aborted isn't
        result.data = QJsonDocument::fromJson(reply->readAll()).object();
    }
    result.ok = reply->error() == QNetworkReply::NoError && isSuccess(result.status);
    if (!result.ok) {
        const QString detail = readFailure(result.data, &result.code);
        result.message = PortalClient::friendly(result.status, result.code, detail);
    }
    return result;
}

} // namespace

PortalClient::PortalClient(const QString &baseUrl, QObject *parent)
    : PortalClient(baseUrl, Timing{}, parent)
{
}

PortalClient::PortalClient(const QString &baseUrl, const Timing &timing, QObject *parent)
    : QObject(parent)
    , m_baseUrl(baseUrl)
    , m_timing(timing)
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
    QNetworkReply *reply =
        send(verb, path, body ? QJsonDocument(*body).toJson(QJsonDocument::Compact) : QByteArray());
    connect(reply, &QNetworkReply::finished, this, [this, reply, callback, tracksSession] {
        finishRequest(reply, callback, tracksSession);
    });
}

QNetworkReply *PortalClient::send(const QString &verb, const QString &path, const QByteArray &body)
{
    QNetworkRequest request(QUrl(m_baseUrl + path, QUrl::TolerantMode));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    request.setRawHeader("Accept", "application/json");
    request.setRawHeader("User-Agent", "Tallyforge-OBS/" + build_config::version().toUtf8());
    request.setTransferTimeout(m_timing.transfer);

    if (verb == "GET"_L1) {
        return m_network.get(request);
    }
    if (verb == "POST"_L1) {
        return m_network.post(request, body);
    }
    if (verb == "PUT"_L1) {
        return m_network.put(request, body);
    }
    return m_network.sendCustomRequest(request, verb.toUtf8(), body);
}

void PortalClient::finishRequest(QNetworkReply *reply, const Callback &callback, bool tracksSession)
{
    const PortalResult result = readResult(reply);
    reply->deleteLater();
    if (result.status == 401 && tracksSession) {
        setSignedIn(false);
    }
    if (callback) {
        callback(result);
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
    const QJsonObject body{{u"email"_s, email.trimmed()}, {u"password"_s, password}};
    request(
        u"POST"_s, u"/auth/login"_s, &body,
        [this, callback](const PortalResult &result) {
            if (result.ok && !result.data.value("totp_required"_L1).toBool()) {
                finishSignIn(result);
            }
            if (callback) {
                callback(result);
            }
        },
        false);
}

void PortalClient::signInWithCode(const QString &challengeId, const QString &code,
                                  const Callback &callback)
{
    const QJsonObject body{{u"challenge_id"_s, challengeId}, {u"code"_s, code.trimmed()}};
    request(
        u"POST"_s, u"/auth/login/totp"_s, &body,
        [this, callback](const PortalResult &result) {
            if (result.ok) {
                finishSignIn(result);
            }
            if (callback) {
                callback(result);
            }
        },
        false);
}

void PortalClient::restoreSession(const Callback &callback)
{
    request(
        u"GET"_s, u"/auth/me"_s, nullptr,
        [this, callback](const PortalResult &result) {
            if (result.ok) {
                finishSignIn(result);
            } else if (result.status == 401) {
                m_jar->wipe();
            }
            if (callback) {
                callback(result);
            }
        },
        false);
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
    request(u"POST"_s, u"/auth/logout"_s, nullptr, {}, false);
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
    Q_EMIT signedInChanged(signedIn);
}

} // namespace tallyforge
