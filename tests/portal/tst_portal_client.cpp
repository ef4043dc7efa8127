// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "portal/PortalClient.h"
#include "tests/support/HttpStub.h"
#include "tests/support/SkippedTime.h"

#include <QFile>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr const char *userBody = R"({"user":{"email":"a@b.example","role":"owner"}})";

HttpReply answer(int status, const QByteArray &body, const QByteArray &headers = {})
{
    return {status, body, headers, HttpReply::How::Answer};
}

} // namespace

class TestPortalClient : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<HttpStub> m_server;
    std::unique_ptr<PortalClient> m_client;
    QList<PortalResult> m_results;

    QString sessionFile() const { return m_dir->filePath(u"x/session.json"_s); }
    PortalClient::Callback keep()
    {
        return [this](const PortalResult &result) { m_results.append(result); };
    }
    void restart()
    {
        m_client = std::make_unique<PortalClient>(m_server->url(), nullptr);
        m_client->setSessionFile(sessionFile());
        m_results.clear();
    }

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_server = std::make_unique<HttpStub>();
        restart();
    }
    void cleanup()
    {
        m_client.reset();
        m_server.reset();
    }

    void failures_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, int status, const char *body, const char *code, const char *text) {
            QTest::newRow(name) << status << QByteArray(body) << QString::fromUtf8(code) << QString::fromUtf8(text);
        };
        row("credentials, not signed out", 401, R"({"detail":{"error":"invalid_credentials"}})", "invalid_credentials",
            "That email and password did not match. Check them and try again.");
        row("code", 400, R"({"error":"invalid_totp_code"})", "invalid_totp_code",
            "That code was not accepted. Enter the current 6-digit code from your authenticator "
            "app.");
        row("429", 429, "", "", "Too many attempts. Wait a minute and try again.");
        row("rate limit by its code", 400, R"({"error":"rate_limited"})", "rate_limited",
            "Too many attempts. Wait a minute and try again.");
        row("504", 504, "<html>", "", "The device did not answer. Check that it is powered on and online.");
        row("unreachable device before 502", 502, R"({"error":"device_unreachable_or_timeout"})",
            "device_unreachable_or_timeout", "The device did not answer. Check that it is powered on and online.");
        row("502", 502, "", "", "The Tallyforge service could not reach the live data feed. Try again shortly.");
        row("gateway", 500, R"({"detail":{"error":"gateway_unreachable"}})", "gateway_unreachable",
            "The Tallyforge service could not reach the live data feed. Try again shortly.");
        row("other's device", 403, R"({"detail":{"error":"claim_code_device_mismatch"}})", "claim_code_device_mismatch",
            "That device is not on this account.");
        row("401", 401, "[]", "", "You have been signed out. Sign in again.");
        row("403 before its detail", 403, R"({"detail":"No."})", "", "Your account role is not allowed to do that.");
        row("detail", 409, R"({"detail":"Already linked."})", "", "Already linked.");
        row("detail beside a code", 409, R"({"detail":"Already linked.","error":"linked"})", "linked",
            "Already linked.");
        row("nothing known", 418, "not json", "", "Tallyforge returned an error (418).");
        row("empty detail object", 500, R"({"detail":{}})", "", "Tallyforge returned an error (500).");
    }
    void failures()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        m_server->answer = [&](const HttpRequest &) { return answer(status, body); };
        m_client->listDevices(keep());
        QTRY_COMPARE(m_results.size(), 1);
        QVERIFY(!m_results[0].ok);
        QCOMPARE(m_results[0].status, status);
        QTEST(m_results[0].code, "code");
        QTEST(m_results[0].message, "message");
    }

    void noAnswer()
    {
        m_server->answer = [](const HttpRequest &) { return HttpReply{200, {}, {}, HttpReply::How::Hang}; };
        m_client->listDevices(keep());
        QTRY_COMPARE(m_server->requests.size(), 1);
        skip(18s);
        QCOMPARE(m_results.size(), 0);
        skip(3s);
        QTRY_COMPARE(m_results.size(), 1);
        QCOMPARE(m_results[0].status, 0);
        QCOMPARE(m_results[0].message, u"Could not reach Tallyforge. Check your internet connection."_s);

        m_server->answer = [](const HttpRequest &) {
            return HttpReply{200, "{\"a\":1}", {}, HttpReply::How::CutShort};
        };
        m_client->listDevices(keep());
        QTRY_COMPARE(m_results.size(), 2);
        QVERIFY(!m_results[1].ok);
        skip(70s);
        QCOMPARE(m_results.size(), 2);
    }

    void replyWithoutAnEnd_data()
    {
        QTest::addColumn<HttpReply::How>("how");
        QTest::newRow("a byte now and then") << HttpReply::How::Drip;
        QTest::newRow("as fast as it goes") << HttpReply::How::Flood;
    }
    void replyWithoutAnEnd()
    {
        QFETCH(HttpReply::How, how);
        m_server->answer = [how](const HttpRequest &) { return HttpReply{200, "{", {}, how}; };
        m_client->listDevices(keep());
        QTRY_COMPARE(m_server->requests.size(), 1);
        for (int seconds = 0; seconds < 55 && how == HttpReply::How::Drip; ++seconds) {
            QCOMPARE(m_results.size(), 0);
            skip(1s);
            QTest::qWait(5); // for some blanks to arrive
        }
        QVERIFY(skipUntil([this] { return m_results.size() == 1; }));
        QVERIFY(!m_results[0].ok);
        QCOMPARE(m_results[0].status, 0);
    }

    void redirectElsewhereGetsNoPassword()
    {
        HttpStub elsewhere;
        m_server->answer = [&](const HttpRequest &) {
            return answer(307, "{}", "Location: " + elsewhere.url().toUtf8() + "/auth/login\r\n");
        };
        m_client->signIn(u"a"_s, u"p"_s, keep());
        QTRY_COMPARE(m_results.size(), 1);
        QVERIFY(!m_results[0].ok);
        QCOMPARE(elsewhere.requests.size(), 0);
    }

    // However a session ends, the replies to its requests neither end nor begin another one.
    void callOfAnEndedSession_data()
    {
        QTest::addColumn<std::function<void(TestPortalClient &)>>("ask");
        QTest::addColumn<std::function<void(TestPortalClient &)>>("end");
        QTest::addColumn<bool>("signedIn");
        using Step = std::function<void(TestPortalClient &)>;
        const Step list = [](auto &t) { t.m_client->listDevices(t.keep()); };
        const Step restore = [](auto &t) { t.m_client->restoreSession(t.keep()); };
        const Step code = [](auto &t) { t.m_client->signInWithCode(u"h"_s, u"1"_s, t.keep()); };
        const Step signOut = [](auto &t) { t.m_client->signOut(); };
        const Step signIn = [](auto &t) { t.m_client->signIn(u"a"_s, u"p"_s, t.keep()); };
        const Step expire = [](auto &t) { t.m_client->deviceState(u"expired"_s, {}); };
        QTest::newRow("listing, signed out") << list << signOut << false;
        QTest::newRow("listing, signed in anew") << list << signIn << true;
        QTest::newRow("listing, another call's 401") << list << expire << false;
        QTest::newRow("code, signed out") << code << signOut << false;
        QTest::newRow("restore, signed in by hand") << restore << signIn << true;
    }
    void callOfAnEndedSession()
    {
        QFETCH(std::function<void(TestPortalClient &)>, ask);
        QFETCH(std::function<void(TestPortalClient &)>, end);
        QFETCH(bool, signedIn);
        m_server->answer = [](const HttpRequest &) { return answer(200, userBody, "Set-Cookie: s=1\r\n"); };
        m_client->signIn(u"a"_s, u"p"_s, {});
        QTRY_VERIFY(m_client->signedIn());
        m_server->answer = [](const HttpRequest &request) {
            if (request.path == "/auth/login") {
                return answer(200, userBody, "Set-Cookie: s=2; Path=/\r\n");
            }
            return request.path.contains("expired") ? answer(401, "{}")
                                                    : HttpReply{401, "{}", {}, HttpReply::How::Hang};
        };
        ask(*this);
        QTRY_COMPARE(m_server->requests.size(), 2);
        end(*this);
        QTRY_COMPARE(m_results.size(), signedIn ? 2 : 1);
        m_server->release(userBody);
        QCOMPARE(std::ranges::count_if(m_results, &PortalResult::isOfEndedSession), 1);
        m_client->sendCommand(u"d"_s, u"x"_s, {}, {});
        QTRY_VERIFY(m_server->asked().constLast().endsWith("/x"));
        QCOMPARE(m_client->signedIn(), signedIn);
        QCOMPARE(m_results.size(), signedIn ? 2 : 1);
        if (signedIn) {
            QCOMPARE(m_server->requests.last().headers.value("cookie"), "s=2");
            QVERIFY(QFile::exists(sessionFile()));
        }
    }

    void operations_data()
    {
        QTest::addColumn<std::function<void(PortalClient &)>>("call");
        QTest::addColumn<QByteArray>("asked");
        QTest::addColumn<QByteArray>("body");
        const auto row = [](const char *name, const char *asked, const char *body,
                            const std::function<void(PortalClient &)> &call) {
            QTest::newRow(name) << call << QByteArray(asked) << QByteArray(body);
        };
        row("devices", "GET /devices", "", [](auto &c) { c.listDevices({}); });
        row("state of an odd id", "GET /devices/a%2Fb%20%25%C3%A4/state", "",
            [](auto &c) { c.deviceState(u"a/b %ä"_s, {}); });
        row("command", "POST /devices/d/cmd/reboot", R"({"args":{"x":1}})",
            [](auto &c) { c.sendCommand(u"d"_s, u"reboot"_s, {{u"x"_s, 1}}, {}); });
        row("config", "POST /devices/d/config", R"({"config":{}})", [](auto &c) { c.setConfig(u"d"_s, {}, {}); });
        row("link without a code", "POST /devices/link", R"({"device_id":"d","via":"usb"})",
            [](auto &c) { c.linkDevice(u"d"_s, {}, u"usb"_s, {}); });
        row("link with a code", "POST /devices/link", R"({"code":"12","device_id":"d","via":"manual"})",
            [](auto &c) { c.linkDevice(u"d"_s, u"12"_s, u"manual"_s, {}); });
        row("reveal", "POST /devices/d/pairing/reveal", "", [](auto &c) { c.revealPairing(u"d"_s, {}); });
        row("save", "PUT /devices/d/pairing", R"({"admin_password":" p "})",
            [](auto &c) { c.savePairing(u"d"_s, u" p "_s, {}); });
        row("outputs", "GET /api/graphics/outputs", "", [](auto &c) { c.listGraphicsOutputs({}); });
        row("sign-in trims the address alone", "POST /auth/login", R"({"email":"a@b","password":" p "})",
            [](auto &c) { c.signIn(u" a@b\n"_s, u" p "_s, {}); });
        row("second step", "POST /auth/login/totp", R"({"challenge_id":"h","code":"123456"})",
            [](auto &c) { c.signInWithCode(u"h"_s, u" 123456 "_s, {}); });
        row("other verb", "DELETE /x?y=1", R"({})", [](auto &c) {
            const QJsonObject body;
            c.request(u"DELETE"_s, u"/x?y=1"_s, &body, {}, false);
        });
    }
    void operations()
    {
        QFETCH(std::function<void(PortalClient &)>, call);
        call(*m_client);
        QTRY_COMPARE(m_server->requests.size(), 1);
        QTEST(m_server->asked().constFirst(), "asked");
        const HttpRequest &request = m_server->requests.first();
        QTEST(request.body, "body");
        QCOMPARE(request.headers.value("content-type"), "application/json");
        QCOMPARE(request.headers.value("accept"), "application/json");
        QCOMPARE(request.headers.value("user-agent"), "Tallyforge-OBS/1.0.1");
    }

    void sessionOutlivesTheProgram()
    {
        QSignalSpy signedIn(m_client.get(), &PortalClient::signedInChanged);
        m_server->answer = [](const HttpRequest &) {
            return answer(200, userBody,
                          "Set-Cookie: sid=abc; Path=/; HttpOnly\r\nSet-Cookie: keep=1; "
                          "Max-Age=600; Path=/\r\n"
                          "Set-Cookie: old=1; Max-Age=1; Path=/\r\n");
        };
        m_client->signIn(u"a"_s, u"p"_s, {});
        QTRY_VERIFY(m_client->signedIn());
        QCOMPARE(m_client->email(), u"a@b.example"_s);
        QCOMPARE(m_client->role(), u"owner"_s);
        QCOMPARE(signedIn.count(), 1);
        QFile file(sessionFile());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!(file.permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther)));
        QVERIFY(file.readAll().startsWith("[\""));

        m_server->answer = [](const HttpRequest &) { return answer(200, userBody); };
        skip(1100ms); // the shortest life that a cookie can have
        m_client->restoreSession({});
        QTRY_COMPARE(m_server->requests.size(), 2);
        QTRY_VERIFY(QFile(sessionFile()).size() > 0);
        restart();
        m_client->restoreSession(keep());
        QTRY_COMPARE(m_results.size(), 1);
        QVERIFY(m_client->signedIn());
        QList<QByteArray> sent = m_server->requests.last().headers.value("cookie").split(';');
        QCOMPARE(sent.size(), 2); // the expired one isn't there
        QVERIFY(m_server->requests.last().headers.value("cookie").contains("sid=abc"));
        QVERIFY(QFile::exists(sessionFile()));

        m_client->signOut();
        QVERIFY(!m_client->signedIn() && !QFile::exists(sessionFile()));
        QTRY_COMPARE(m_server->asked().constLast(), "POST /auth/logout");
        QVERIFY(m_server->requests.last().headers.value("cookie").contains("sid=abc")); // the session that is to end
        m_client->listDevices({});
        QTRY_COMPARE(m_server->asked().constLast(), "GET /devices");
        QVERIFY(!m_server->requests.last().headers.contains("cookie"));
    }

    void restoreFailures_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("fileStays");
        QTest::newRow("401 ends the session") << 401 << false;
        QTest::newRow("500 doesn't") << 500 << true;
        QTest::newRow("no answer doesn't") << 0 << true;
    }
    void restoreFailures()
    {
        QFETCH(int, status);
        QFETCH(bool, fileStays);
        m_server->answer = [](const HttpRequest &) { return answer(200, userBody, "Set-Cookie: s=1\r\n"); };
        m_client->signIn(u"a"_s, u"p"_s, {});
        QTRY_VERIFY(m_client->signedIn());
        restart();
        m_server->answer = [&](const HttpRequest &) {
            return HttpReply{status, "{}", {}, status ? HttpReply::How::Answer : HttpReply::How::Hang};
        };
        m_client->restoreSession(keep());
        QVERIFY(skipUntil([this] { return m_results.size() == 1; }));
        QCOMPARE(QFile::exists(sessionFile()), fileStays);
        QVERIFY(!m_client->signedIn());
    }

    void corruptSessionFileIsEmpty()
    {
        QDir().mkpath(m_dir->filePath(u"x"_s));
        QFile file(sessionFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[\"sid=abc; do");
        file.close();
        restart();
        m_client->listDevices({});
        QTRY_COMPARE(m_server->requests.size(), 1);
        QVERIFY(!m_server->requests[0].headers.contains("cookie"));
    }

    void secondStep()
    {
        m_server->answer = [](const HttpRequest &request) {
            return answer(200,
                          request.path == "/auth/login" ? R"({"totp_required":true,"challenge_id":"h"})" : userBody);
        };
        m_client->signIn(u"a"_s, u"p"_s, keep());
        QTRY_COMPARE(m_results.size(), 1);
        QVERIFY(m_results[0].ok && !m_client->signedIn());
        m_client->signInWithCode(u"h"_s, u"1"_s, keep());
        QTRY_COMPARE(m_results.size(), 2);
        QVERIFY(m_client->signedIn());
    }

    void only401OfATrackedCallSignsOut()
    {
        QSignalSpy spy(m_client.get(), &PortalClient::signedInChanged);
        m_server->answer = [](const HttpRequest &) { return answer(401, "{}"); };
        m_client->listDevices(keep());
        QTRY_COMPARE(m_results.size(), 1);
        QCOMPARE(spy.count(), 0); // wasn't signed in

        m_server->answer = [](const HttpRequest &) { return answer(200, userBody); };
        m_client->signIn(u"a"_s, u"p"_s, {});
        QTRY_VERIFY(m_client->signedIn());
        m_server->answer = [](const HttpRequest &) { return answer(401, "{}"); };
        m_client->signIn(u"a"_s, u"p"_s, keep());
        QTRY_COMPARE(m_results.size(), 2);
        QVERIFY(m_client->signedIn());
        m_client->listDevices(keep());
        QTRY_COMPARE(m_results.size(), 3);
        QVERIFY(!m_client->signedIn());
        QVERIFY(QFile::exists(sessionFile()));
        QCOMPARE(spy.count(), 2);
    }

    void lists()
    {
        const QJsonObject devices = QJsonDocument::fromJson(R"({"devices":[5,{},{"nickname":"n"},
            {"device_id":"a","status":"online","ble_passkey":"123456"},{"device_id":"b","nickname":"Gym"}]})")
                                        .object();
        const QList<PortalDevice> list = PortalClient::parseDevices(devices);
        QCOMPARE(list.size(), 2);
        QCOMPARE(list[0].displayName(), u"a"_s);
        QCOMPARE(list[0].blePasskey, u"123456"_s);
        QCOMPARE(list[1].displayName(), u"Gym (b)"_s);
        QVERIFY(PortalClient::parseDevices({}).isEmpty());

        const QJsonObject outputs = QJsonDocument::fromJson(R"({"outputs":[{"id":"x"},{"share_token":"t"},
            {"id":"a","share_token":"t1"},{"id":"b","share_token":"t2","name":"B","width":1280,"height":720}]})")
                                        .object();
        const QList<GraphicsOutput> parsed = PortalClient::parseOutputs(outputs, u"https://p.example"_s);
        QCOMPARE(parsed.size(), 2);
        QCOMPARE(parsed[0].name, u"a"_s);
        QCOMPARE(QSize(parsed[0].width, parsed[0].height), QSize(1920, 1080));
        QCOMPARE(parsed[1].url, u"https://p.example/graphics/o/t2"_s);
        QCOMPARE(QSize(parsed[1].width, parsed[1].height), QSize(1280, 720));
    }
};

QTEST_GUILESS_MAIN(TestPortalClient)
#include "tst_portal_client.moc"
