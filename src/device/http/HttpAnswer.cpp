// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/http/HttpAnswer.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1StringView(key)).toString();
}

QJsonObject readBody(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (document.isObject()) {
        return document.object();
    }
    const QJsonValue value = document.isArray() ? document.array() : QJsonValue(QJsonValue::Null);
    return {{u"value"_s, value}};
}

QString codeFor(int status, const QJsonObject &body)
{
    switch (status) {
    case 400:
        return body.value("code"_L1).toString(u"bad_request"_s);
    case 401:
        return u"unauthorized"_s;
    case 403: // a new sign-in replaces a CSRF token that is out of date, as it does a cookie
        return textOf(body, "error") == "csrf_invalid"_L1 ? u"unauthorized"_s : u"forbidden"_s;
    case 429:
        return u"rate_limited"_s;
    case 503:
        return u"unavailable"_s;
    default:
        return u"device_error"_s;
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
    return QCoreApplication::translate("tallyforge::HttpAnswer",
                                       "The device answered with an error (%1).")
        .arg(status);
}

// The device restarts over these, maybe before it has answered.
bool mayEndInSilence(const QString &method)
{
    return method == "reboot"_L1 || method == "otaApply"_L1;
}

} // namespace

HttpAnswer HttpAnswer::read(const QString &method, int status, const QByteArray &body)
{
    if (status == 0 && mayEndInSilence(method)) {
        return {true, {{u"status"_s, u"ok"_s}}, {}, {}};
    }
    if (status == 0) {
        return failure(u"unreachable"_s,
                       QCoreApplication::translate("tallyforge::HttpAnswer",
                                                   "Could not reach the device on your network."));
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
    QJsonObject reply{{u"id"_s, id}, {u"ok"_s, ok}};
    if (ok) {
        reply.insert(u"result"_s, result);
    } else {
        reply.insert(u"error"_s, QJsonObject{{u"code"_s, code}, {u"message"_s, message}});
    }
    return QJsonDocument(reply).toJson(QJsonDocument::Compact);
}

} // namespace tallyforge
