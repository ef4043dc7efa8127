// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArrayList>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <functional>
#include <utility>

namespace tallyforge::test {

/// A device at the far end of any carrier: it writes down each request and gives each method's scripted answers in
/// order. A method without an answer succeeds.
class ScriptedDevice
{
public:
    using Reply = std::function<void(const QJsonObject &)>;

    /// The answers: "method {…}" for a success with that result, "method never", or "method code: message"
    /// for a refusal.
    void tell(const QByteArrayList &lines)
    {
        for (const QByteArray &line : lines) {
            const qsizetype space = line.indexOf(' ');
            script[QString::fromUtf8(line.first(space))].append(line.sliced(space + 1));
        }
    }
    /// From the carrier: a request, and the way for its reply, which lacks the id only.
    void take(const QJsonObject &request, const Reply &reply)
    {
        const QString method = request.value(QLatin1StringView("method")).toString();
        if (method == QLatin1StringView("getState")) {
            ++polls;
        } else {
            const QJsonObject params = request.value(QLatin1StringView("params")).toObject();
            requests.append(method + QString::fromUtf8(QJsonDocument(params).toJson(QJsonDocument::Compact)));
        }
        if (onRequest) {
            onRequest(method);
        }
        QByteArrayList &answers = script[method];
        const QByteArray answer = answers.isEmpty() ? QByteArray("{}") : answers.takeFirst();
        if (answer == "never") {
            held.append(reply);
        } else {
            reply(replyOf(answer));
        }
    }
    /// Answers all requests that wait for an answer, too late perhaps.
    void answerHeld()
    {
        const QList<Reply> replies = std::exchange(held, {});
        for (const Reply &reply : replies) {
            reply(replyOf("{}"));
        }
    }

    QHash<QString, QByteArrayList> script;
    QJsonObject info;     ///< its description of itself, for a carrier that brings one
    bool greets = true;   ///< it lets links open
    QStringList requests; ///< method and parameters of all but those for the live data,
    int polls = 0;        ///< whose number this is
    QList<Reply> held;
    std::function<void(const QString &method)> onRequest; ///< called before each answer

private:
    [[nodiscard]] static QJsonObject replyOf(const QByteArray &answer)
    {
        if (answer.startsWith('{')) {
            return {{QStringLiteral("ok"), true}, {QStringLiteral("result"), QJsonDocument::fromJson(answer).object()}};
        }
        const qsizetype colon = answer.indexOf(": ");
        const QJsonObject error{{QStringLiteral("code"), QString::fromUtf8(answer.first(colon))},
                                {QStringLiteral("message"), QString::fromUtf8(answer.sliced(colon + 2))}};
        return {{QStringLiteral("ok"), false}, {QStringLiteral("error"), error}};
    }
};

} // namespace tallyforge::test
