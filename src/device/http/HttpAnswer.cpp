// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/http/HttpAnswer.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

namespace tallyforge {

namespace {

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(tallyforge::HttpAnswer)
};

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

QJsonObject readBody(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (document.isObject()) {
        return document.object();
    }
    const QJsonValue value = document.isArray() ? document.array() : QJsonValue(QJsonValue::Null);
    return {{QStringLiteral("value"), value}};
}

QString codeFor(int status, const QJsonObject &body)
{
    switch (status) {
    case 400:
        return body.value(QLatin1String("code")).toString(QStringLiteral("bad_request"));
    case 401:
        return QStringLiteral("unauthorized");
    case 403: // a CSRF token that is out of date is mended by a new sign-in, like a cookie
        return textOf(body, "error") == QLatin1String("csrf_invalid")
                   ? QStringLiteral("unauthorized")
                   : QStringLiteral("forbidden");
    case 429:
        return QStringLiteral("rate_limited");
    case 503:
        return QStringLiteral("unavailable");
    default:
        return QStringLiteral("device_error");
    }
}

QString messageFor(int status, const QJsonObject &body)
{
    if (const QString message = textOf(body, "message"); !message.isEmpty()) {
        return message;
    }
    if (const QString error = textOf(body, "error"); !error.isEmpty()) {
        return error;
    }
    return Texts::tr("The device answered with an error (%1).").arg(status);
}

// The device restarts over these, maybe before it has answered.
bool mayEndInSilence(const QString &method)
{
    return method == QLatin1String("reboot") || method == QLatin1String("otaApply");
}

} // namespace

HttpAnswer HttpAnswer::read(const QString &method, int status, const QByteArray &body)
{
    if (status == 0 && mayEndInSilence(method)) {
        return {true, {{QStringLiteral("status"), QStringLiteral("ok")}}, {}, {}};
    }
    if (status == 0) {
        return failure(QStringLiteral("unreachable"),
                       Texts::tr("Could not reach the device on your network."));
    }
    const QJsonObject object = readBody(body);
    if (status >= 200 && status <= 299) {
        return {true, object, {}, {}};
    }
    return failure(codeFor(status, object), messageFor(status, object));
}

HttpAnswer HttpAnswer::failure(const QString &code, const QString &message)
{
    return {false, {}, code, message};
}

QByteArray HttpAnswer::toJson(int id) const
{
    QJsonObject reply{{QStringLiteral("id"), id}, {QStringLiteral("ok"), ok}};
    if (ok) {
        reply.insert(QStringLiteral("result"), result);
    } else {
        reply.insert(QStringLiteral("error"), QJsonObject{{QStringLiteral("code"), code},
                                                          {QStringLiteral("message"), message}});
    }
    return QJsonDocument(reply).toJson(QJsonDocument::Compact);
}

} // namespace tallyforge
