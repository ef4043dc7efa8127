// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The link to a web server that turns routes back into methods.

#include "device/http/HttpLink.h"
#include "device/http/HttpRoutes.h"
#include "tests/device/SessionContract.h"
#include "tests/support/HttpStub.h"

#include <QTest>
#include <QUrlQuery>

#include <algorithm>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;
using How = test::HttpReply::How;

class SessionOverHttp : public SessionContract
{
    Q_OBJECT

    [[nodiscard]] bool waitsForever() const override { return false; }
    DeviceLink *makeLink() override
    {
        unplug(); // requests of an earlier link aren't this one's
        plugIn();
        m_server.answer = [this](const test::HttpRequest &asked) { return answer(asked); };
        return new HttpLink(u"127.0.0.1:"_s + QString::number(m_port));
    }
    void unplug() override
    {
        m_server.close();
        const QList<QTcpSocket *> sockets = m_server.findChildren<QTcpSocket *>();
        for (QTcpSocket *socket : sockets) {
            socket->abort();
        }
    }
    void plugIn() override { QVERIFY(m_server.isListening() || m_server.listen(QHostAddress::LocalHost, m_port)); }
    [[nodiscard]] bool noticesUnplugging() const override { return false; }
    [[nodiscard]] bool introducesTheDevice() const override { return false; }
    [[nodiscard]] bool carries(QStringView method) const override { return httpRouteFor(method.toString()).found; }

    test::HttpReply answer(const test::HttpRequest &asked)
    {
        if (!asked.headers.contains("accept")) { // is anybody there?
            return {401, "{}", "", m_device.greets ? How::Answer : How::Hang};
        }
        QJsonObject params = QJsonDocument::fromJson(asked.body).object();
        if (asked.headers.value("content-type") == "application/x-www-form-urlencoded") {
            const auto pairs = QUrlQuery(QString::fromLatin1(asked.body)).queryItems(QUrl::FullyDecoded);
            for (const auto &[key, value] : pairs) {
                params.insert(key, value);
            }
        }
        test::HttpReply reply{200, "{}", "", How::Hang};
        const auto now = std::make_shared<test::HttpReply *>(&reply);
        m_device.take({{u"method"_s, methodOf(asked)}, {u"params"_s, params}}, [this, now](const QJsonObject &told) {
            *now ? void(**now = replyOf(told)) : m_server.release("{}"); // a late answer is a bare success
        });
        *now = nullptr;
        return reply;
    }
    static QString methodOf(const test::HttpRequest &asked)
    {
        static const QStringList methods =
            u"login getStatus getState changePassword ensureApiToken getControllerList setSettings reboot "
            "getControllerConfig setControllerConfig scanWifi configureWifi"_s.split(u' ');
        return *std::ranges::find_if(methods, [&asked](const QString &method) {
            const HttpRoute route = httpRouteFor(method);
            return route.verb == asked.verb && route.path.toLatin1() == asked.path;
        });
    }
    static test::HttpReply replyOf(const QJsonObject &told)
    {
        const QJsonObject error = told.value(u"error"_s).toObject();
        const bool ok = told.value(u"ok"_s).toBool();
        const int status = error.value(u"code"_s) == u"unauthorized"_s ? 401 : 400;
        return {ok ? 200 : status, QJsonDocument(ok ? told.value(u"result"_s).toObject() : error).toJson(),
                "Set-Cookie: s=1; Path=/\r\n"};
    }

    HttpStub m_server;
    const quint16 m_port = m_server.serverPort();
};

QTEST_GUILESS_MAIN(SessionOverHttp)
#include "tst_session_over_http.moc"
