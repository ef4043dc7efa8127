// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The link over real sockets, with a device's web server in software at its far end.

#include "device/DeviceSession.h"
#include "device/RpcTransport.h"
#include "device/http/HttpLink.h"
#include "device/http/LanAddress.h"
#include "tests/support/HttpStub.h"
#include "tests/support/SkippedTime.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QNetworkProxy>
#include <QSignalSpy>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using How = test::HttpReply::How;

namespace {

QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

QByteArray compact(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

// Signs in by the first answer, and gives the last one to all other requests.
struct Rig
{
    explicit Rig(const test::HttpReply &answer = {})
    {
        device.answer = [answer](const test::HttpRequest &request) {
            return request.path == "/login"
                       ? test::HttpReply{200, R"({"csrf_token":"T"})", "Set-Cookie: s=1; Path=/\r\n"}
                       : answer;
        };
        link.open();
        opened.wait();
        device.requests.clear();
    }
    QJsonObject call(const QString &method, const QJsonObject &params = {})
    {
        QSignalSpy message(link.transport(), &RpcTransport::message);
        const QJsonObject request{{u"id"_s, 7}, {u"method"_s, method}, {u"params"_s, params}};
        link.transport()->send(QJsonDocument(request).toJson());
        QElapsedTimer timer;
        timer.start();
        const auto isThere = [&message] { return !message.isEmpty(); };
        const bool isAnswered = QTest::qWaitFor(isThere, 100) || skipUntil(isThere, 75ms);
        waited = timer.durationElapsed();
        return isAnswered ? json(message[0][0].toByteArray()) : QJsonObject();
    }
    test::HttpStub device;
    HttpLink link{device.url().mid(7)};
    std::chrono::nanoseconds waited{}; // for the last answer
    QSignalSpy opened{&link, &DeviceLink::opened};
};

} // namespace

class TestHttpLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void routes_data()
    {
        QTest::addColumn<QByteArray>("line");
        const QByteArray rows =
            "login POST /login;getStatus GET /api/status;networkTest GET /api/network-test;"
            "changePassword POST /api/auth/change-password;ensureApiToken POST /api/auth/api-token;"
            "getSettings GET /api/settings;setSettings POST /api/settings;scanWifi GET /scan;getState GET /state;"
            "getControllerList GET /api/controller/list;getControllerConfig GET /api/controller/config;"
            "setControllerConfig POST /api/controller/config;configureWifi POST /configure;otaCheck GET /ota/check;"
            "reboot POST /api/system/reboot;otaApply POST /ota/apply;otaProgress GET /ota/progress;"
            "c6OtaStatus GET /api/system/c6-ota;c6OtaApply POST /api/system/c6-ota;provision POST /api/provision;"
            "getMqttConfig GET /api/mqtt/broker;setMqttConfig POST /api/mqtt/broker;getDeviceId GET /api/device-id;"
            "setDeviceId POST /api/device-id;blePasskey GET /api/auth/ble-passkey";
        const QByteArrayList lines = rows.split(';');
        for (const QByteArray &line : lines) {
            const qsizetype blank = line.indexOf(' ');
            QTest::newRow(line.left(blank)) << line.mid(blank + 1);
        }
    }
    void routes()
    {
        QFETCH(QByteArray, line);
        Rig r({200, R"({"a":1})"});
        const QString method = QString::fromLatin1(QTest::currentDataTag());
        r.call(u"login"_s);
        const QJsonObject params{{u"ssid"_s, u"a b&ü"_s}, {u"pass"_s, u"1+%41="_s}, {u"x"_s, 5}};
        const QJsonObject reply = r.call(method, params);
        const QJsonObject result = json(method == u"login" ? R"({"csrf_token":"T"})" : R"({"a":1})");
        QCOMPARE(reply, (QJsonObject{{u"id"_s, 7}, {u"ok"_s, true}, {u"result"_s, result}}));
        const test::HttpRequest &asked = r.device.requests.constLast();
        QCOMPARE(r.device.asked().constLast(), line);
        QCOMPARE(asked.headers.value("accept"), "application/json");
        QCOMPARE(asked.headers.value("cookie"), "s=1");
        QCOMPARE(asked.headers.value("x-csrf-token"), "T");
        const QByteArray type = asked.headers.value("content-type");
        if (line.startsWith("GET")) {
            QCOMPARE(asked.body + type, "");
        } else if (method == u"configureWifi") {
            QCOMPARE(type + ' ' + asked.body,
                     "application/x-www-form-urlencoded pass=1%2B%2541%3D&ssid=a%20b%26%C3%BC&x=5");
        } else {
            QCOMPARE(type, "application/json");
            QCOMPARE(asked.body, compact(params));
        }
    }

    void answers_data()
    {
        QTest::addColumn<test::HttpReply>("answer");
        QTest::addColumn<QByteArray>("expected"); // the result, or code and message
        const auto row = [](const char *name, int status, const QByteArray &body, const QByteArray &expected,
                            How how = How::Answer, const QByteArray &headers = {}) {
            QTest::newRow(name) << test::HttpReply{status, body, headers, how} << expected;
        };
        row("an array", 200, "[1]", R"({"value":[1]})");
        row("no body", 204, "", R"({"value":null})");
        row("a page instead", 299, "<html>", R"({"value":null})");
        row("cut short", 200, R"({"a":)", R"({"value":null})", How::CutShort);
        row("endless", 200, '"' + QByteArray(3 << 20, 'x') + '"', R"({"value":null})");
        row("dripping", 200, "[", R"({"value":null})", How::Drip);
        row("400 with a code", 400, R"({"code":"c","message":"m","error":"e"})", "c m");
        row("400 with a number as code", 400, R"({"code":5,"error":"e"})", "bad_request e");
        row("401", 401, R"({"code":"c","message":""})", "unauthorized The device answered with an error (401).");
        row("401 that asks for a login", 401, "", "unauthorized The device answered with an error (401).", How::Answer,
            "WWW-Authenticate: Basic realm=\"x\"\r\n");
        row("403 for the token", 403, R"({"error":"csrf_invalid"})", "unauthorized csrf_invalid");
        row("403", 403, R"({"error":"CSRF_invalid","message":"m"})", "forbidden m");
        row("503", 503, "[]", "unavailable The device answered with an error (503).");
        for (const auto &[status, code] : {std::pair{400, "bad_request"},
                                           {403, "forbidden"},
                                           {404, "device_error"},
                                           {429, "rate_limited"},
                                           {500, "device_error"},
                                           {503, "unavailable"}}) {
            const QByteArray number = QByteArray::number(status);
            row(number + " without a word", status, "",
                code + (" The device answered with an error (" + number + ")."));
            row(number + " with a message", status, R"({"message":"m"})", QByteArray(code) + " m");
        }
        row("hanging", 0, "", "unreachable Could not reach the device on your network.", How::Hang);
        row("dropped", 0, "", "unreachable Could not reach the device on your network.", How::Drop);
    }
    void answers()
    {
        QFETCH(test::HttpReply, answer);
        QFETCH(QByteArray, expected);
        Rig r;
        r.device.answer = [&](const test::HttpRequest &) { return answer; };
        for (const QString &method : {u"reboot"_s, u"otaApply"_s, u"getStatus"_s}) {
            r.device.requests.clear();
            const QJsonObject reply = r.call(method);
            const QJsonValue error = reply.value(u"error"_s);
            const QByteArray outcome = reply.value(u"ok"_s).toBool()
                                           ? compact(reply.value(u"result"_s).toObject())
                                           : (error[u"code"].toString() + u' ' + error[u"message"].toString()).toUtf8();
            QCOMPARE(outcome, answer.status == 0 && method != u"getStatus" ? R"({"status":"ok"})" : expected);
            QVERIFY(method == u"getStatus" || r.device.requests.size() == 1); // or it would restart twice
            const auto limit = answer.how == How::Hang ? 30s : answer.how == How::Drip ? 45s : 0s;
            QVERIFY2(abs(r.waited - limit) < 4s, qPrintable(QString::number(r.waited / 1ms)));
        }
        QSignalSpy failed(&r.link, &DeviceLink::failed);
        r.link.open(); // any status is a sign of life
        if (answer.how == How::Hang || answer.how == How::Drip) {
            QTRY_COMPARE(r.device.asked().constLast(), "GET /api/status");
            QTest::qWait(50); // for the first bytes to arrive
            skip(7500ms);
            QCOMPARE(r.opened.count() + failed.count(), 1);
            skip(1s);
        }
        QTRY_COMPARE(r.opened.count() + failed.count(), 2);
        QCOMPARE(failed.count(), answer.status == 0 ? 1 : 0);
    }

    void signIns_data()
    {
        QTest::addColumn<QByteArray>("setCookie");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("cookie");
        QTest::addColumn<QByteArray>("csrf");
        const auto row = [](const char *name, const QByteArray &setCookie, const QByteArray &body,
                            const QByteArray &cookie, const QByteArray &csrf = {}) {
            QTest::newRow(name) << setCookie << body << cookie << csrf;
        };
        row("attributes", "Set-Cookie: a=2; Path=/\r\n", R"({"csrf_token":"N"})", "a=2", "N");
        row("no attributes", "Set-Cookie: a=2\r\n", "[]", "a=2");
        row("two cookies", "Set-Cookie: a=2\r\nSet-Cookie: b=3; Path=/\r\n", "{}", "a=2");
        row("no name", "Set-Cookie: ;a\r\n", "{}", ";a");
        row("none", "", R"({"csrf_token":5})", "");
        row("a token that breaks the header", "", R"({"csrf_token":"a\r\nb"})", "");
    }
    void signIns()
    {
        QFETCH(QByteArray, setCookie);
        QFETCH(QByteArray, body);
        Rig r({401, "{}", "Set-Cookie: no=1\r\n"});
        r.call(u"login"_s);
        r.call(u"getStatus"_s); // only a sign-in that succeeds changes the session
        r.call(u"getStatus"_s);
        QCOMPARE(r.device.requests.constLast().headers.value("cookie"), "s=1");
        r.device.answer = [&](const test::HttpRequest &) { return test::HttpReply{200, body, setCookie}; };
        r.call(u"login"_s);
        r.call(u"getStatus"_s);
        QTEST(r.device.requests.constLast().headers.value("cookie"), "cookie");
        QTEST(r.device.requests.constLast().headers.value("x-csrf-token"), "csrf");
        r.link.close();
        r.link.open();
        r.opened.wait();
        r.call(u"getStatus"_s);
        QVERIFY(!r.device.requests.constLast().headers.contains("cookie"));
    }

    void redirectToAnotherHost()
    {
        test::HttpStub other;
        Rig r({307, "", "Location: " + other.url().toUtf8() + "/\r\n"});
        r.call(u"login"_s);
        for (const QString &method : {u"getStatus"_s, u"changePassword"_s}) { // with cookie and token, with passwords
            QCOMPARE(r.call(method).value(u"error"_s)[u"code"_s].toString(), u"device_error"_s);
        }
        QVERIFY(other.requests.isEmpty());
    }

    void refusedHere()
    {
        Rig r;
        const auto code = [&r](const QString &method) {
            return r.call(method).value(u"error"_s)[u"code"_s].toString();
        };
        QCOMPARE(code(u"getEspNow"_s), u"not_available_here"_s);
        QCOMPARE(code(u"Login"_s), u"not_available_here"_s);
        r.link.close();
        QCOMPARE(code(u"getStatus"_s), u"disconnected"_s);
        QSignalSpy message(r.link.transport(), &RpcTransport::message);
        r.link.transport()->send("{");
        QCOMPARE(json(message[0][0].toByteArray()).value(u"id"_s), 0);
        QCOMPARE(r.device.requests.size(), 0);
    }

    void lateProbe()
    {
        Rig r;
        r.device.answer = [](const test::HttpRequest &) { return test::HttpReply{200, "", "", How::Hang}; };
        r.link.open();
        QTRY_COMPARE(r.device.asked(), QByteArrayList{"GET /api/status"});
        r.link.close();
        r.device.release("{}");
        r.device.answer = [](const test::HttpRequest &) { return test::HttpReply{401}; };
        QVERIFY(!r.link.transport()->isOpen());
        r.link.open();
        QTRY_COMPARE(r.opened.count(), 2);
        r.call(u"getStatus"_s);
        QCOMPARE(r.opened.count(), 2);
    }

    void addresses_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("host");
        QTest::addColumn<QByteArray>("asked"); // empty: nobody
        const auto row = [](const char *name, const QString &typed, const QString &host, const QByteArray &asked) {
            QTest::newRow(name) << typed << host << asked;
        };
        row("a number in a URL", u"  http://7/x  "_s, u"tallyforge0007.local"_s, "tallyforge0007.local");
        row("five digits", u"12345"_s, u"12345"_s, "0.0.48.57");
        row("other digits", u"٣"_s, u"٣"_s, "xn--cib");
        row("a name", u"TallyForge0042"_s, u"tallyforge0042.local"_s, "tallyforge0042.local");
        row("a name with a domain", u"tallyForge0042.lan"_s, u"tallyForge0042.lan"_s, "tallyforge0042.lan");
        row("blanks inside", u"my host"_s, {}, "");
        row("only a scheme", u"http:///"_s, {}, "");
        row("a port", u"192.168.1.5:8080/"_s, u"192.168.1.5:8080"_s, "192.168.1.5:8080");
        row("a port too high", u"host:99999"_s, u"host:99999"_s, "");
        row("no host", u":80"_s, u":80"_s, "");
        row("IPv6", u"http://[FE80::1]/"_s, u"[FE80::1]"_s, "[fe80::1]");
        row("IPv6 without brackets", u"fe80::1%eth0"_s, u"fe80::1%eth0"_s, "[fe80::1%25eth0]");
    }
    void addresses()
    {
        QFETCH(QString, typed);
        QFETCH(QByteArray, asked);
        QTEST(normalizeLanHost(typed), "host");
        test::HttpStub proxy; // is told the whole address
        QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.1"_s, proxy.serverPort()});
        HttpLink link(normalizeLanHost(typed));
        QSignalSpy opened(&link, &DeviceLink::opened);
        QSignalSpy failed(&link, &DeviceLink::failed);
        link.open();
        QTRY_COMPARE(opened.count() + failed.count(), 1);
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        QCOMPARE(proxy.asked().value(0), asked.isEmpty() ? asked : "GET http://" + asked + "/api/status");
        QCOMPARE(opened.isEmpty(), asked.isEmpty());
        QVERIFY(failed.isEmpty() ||
                failed[0] == QVariantList({u"unreachable"_s,
                                           u"Could not reach "_s + normalizeLanHost(typed) +
                                               u" on your network. Check the address, and that this computer and the "
                                               "device are on the same network."_s}));
    }

    // Qt's own work on a reply goes on after it has told that it ran out of time.
    void slotDeletesTheLink()
    {
        test::HttpStub device;
        device.answer = [](const test::HttpRequest &) { return test::HttpReply{0, "", "", How::Hang}; };
        QPointer<HttpLink> link = new HttpLink(device.url().mid(7));
        connect(link, &DeviceLink::failed, this, [&link] { delete link; });
        link->open();
        QVERIFY(skipUntil([&] { return !link; }, 100ms));
        link = new HttpLink(device.url().mid(7));
        device.answer = [](const test::HttpRequest &asked) {
            return test::HttpReply{401, "", "", asked.headers.contains("accept") ? How::Hang : How::Answer};
        };
        connect(link->transport(), &RpcTransport::message, this, [&link] { delete link; });
        connect(link, &DeviceLink::opened, this,
                [&link] { link->transport()->send(R"({"id":1,"method":"getStatus"})"); });
        link->open();
        QVERIFY(skipUntil([&] { return !link; }, 100ms));
    }
};

QTEST_GUILESS_MAIN(TestHttpLink)
#include "tst_http_link.moc"
