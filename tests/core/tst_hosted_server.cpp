// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/HostedServer.h"
#include "core/LiveData.h"
#include "tests/support/OpenFilesLeft.h"
#include "tests/support/SkippedTime.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>

#include <algorithm>

#include <sys/socket.h>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

const auto emptySnapshot = "{\"fields\":{},\"source\":\"\",\"sport\":\"\",\"updated_at\":\"\"}"_ba;

// Another program: it keeps what it is sent.
class Program : public QTcpSocket
{
public:
    explicit Program(quint16 port, const QString &host = u"127.0.0.1"_s) { connectToHost(host, port); }

    [[nodiscard]] bool isConnected() const { return state() == ConnectedState; }
    [[nodiscard]] bool isGone() const { return state() == UnconnectedState; }
    QByteArrayList &lines()
    {
        m_received += readAll();
        for (qsizetype end = 0; (end = m_received.indexOf('\n')) >= 0; m_received.remove(0, end + 1)) {
            m_lines.append(m_received.first(end));
        }
        return m_lines;
    }

private:
    QByteArray m_received;
    QByteArrayList m_lines;
};

QJsonObject toObject(const QByteArray &line)
{
    return QJsonDocument::fromJson(line).object();
}

QJsonObject fieldsOf(const QByteArray &line)
{
    return toObject(line).value(u"fields"_s).toObject();
}

} // namespace

class TestHostedServer : public QObject
{
    Q_OBJECT

    LiveData m_live;
    std::unique_ptr<HostedServer> m_server;

    quint16 start()
    {
        m_server = std::make_unique<HostedServer>(&m_live, nullptr);
        m_server->setCommandHandler([](const QString &op, const QJsonObject &request) -> QJsonObject {
            if (op == u"refuse"_s) {
                return {{u"ok"_s, false}, {u"op"_s, u"else"_s}};
            }
            return op == u"echo"_s ? QJsonObject{{u"n"_s, request.value(u"n"_s)}}
                                   : HostedServer::failure(u"unknown_op"_s);
        });
        QString error;
        return m_server->start(0, false, &error) ? m_server->port() : quint16(0);
    }
    void setScore(int score) { m_live.ingest({{u"home_score"_s, score}}); }

private Q_SLOTS:
    void init()
    {
        m_live.clear();
        m_live.setSourceLabel({});
    }
    void cleanup() { m_server.reset(); }

    void requests_data()
    {
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<QByteArray>("reply");
        const QByteArray unknown = "{\"error\":\"unknown_op\",\"ok\":false,\"op\":\"%1\"}";
        const auto unknownOp = [&](const char *op) { return QByteArray(unknown).replace("%1", op); };
        const auto invalid = "{\"error\":\"invalid_json\",\"ok\":false}"_ba;
        QTest::newRow("bare get") << "get\n"_ba << emptySnapshot;
        QTest::newRow("get in JSON") << " {\"op\":\"get\"} \n"_ba << emptySnapshot;
        QTest::newRow("Windows line end") << "\t echo\r\n"_ba << "{\"ok\":true,\"op\":\"echo\"}"_ba;
        QTest::newRow("other keys") << "{\"op\":\"echo\",\"n\":[1]}\n"_ba
                                    << "{\"n\":[1],\"ok\":true,\"op\":\"echo\"}"_ba;
        QTest::newRow("the handler's ok stays, its op doesn't")
            << "refuse\n"_ba << "{\"ok\":false,\"op\":\"refuse\"}"_ba;
        QTest::newRow("other case") << "GET\n"_ba << unknownOp("GET");
        QTest::newRow("cut short") << "{\"op\":\"get\"\n"_ba << invalid;
        QTest::newRow("two objects") << "{\"op\":\"get\"}{}\n"_ba << invalid;
        QTest::newRow("too deep") << "{\"a\":" + QByteArray(60000, '[') + '\n' << invalid;
        QTest::newRow("an array is a bare word") << "[\"get\"]\n"_ba << unknownOp("[\\\"get\\\"]");
        QTest::newRow("no op") << "{}\n"_ba << unknownOp("");
        QTest::newRow("op of another type") << "{\"op\":[\"get\"]}\n"_ba << unknownOp("");
        QTest::newRow("empty lines before") << "\n \r\n\t\n{}\n"_ba << unknownOp("");
        QTest::newRow("no UTF-8") << "\xff\xfe\n"_ba << unknownOp("\xef\xbf\xbd\xef\xbf\xbd");
        QTest::newRow("a zero byte") << "a\0b\n"_ba << unknownOp("a\\u0000b");
        QTest::newRow("as long as can be") << QByteArray(65535, 'x') + '\n' << unknownOp(QByteArray(65535, 'x'));
    }
    // Whole and byte by byte; the next command must be understood as well.
    void requests()
    {
        QFETCH(QByteArray, sent);
        Program whole(start());
        whole.write(sent);
        QTRY_COMPARE(whole.lines().size(), 2);
        QCOMPARE(whole.lines().constFirst(), emptySnapshot);
        QTEST(whole.lines().constLast(), "reply");
        whole.write("get\n");
        QTRY_COMPARE(whole.lines().size(), 3);
        QCOMPARE(whole.lines().constLast(), emptySnapshot);

        Program slow(m_server->port());
        slow.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        QTRY_VERIFY(slow.isConnected());
        const QByteArray end = sent.last(std::min<qsizetype>(sent.size(), 40));
        for (const char byte : end) {
            slow.write(&byte, 1);
            slow.flush();
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(slow.lines().size(), 2);
        m_server->setCommandHandler({});
        slow.write("x\n");
        QTRY_COMPARE(slow.lines().value(2), "{\"error\":\"unavailable\",\"ok\":false}"_ba);
    }

    void bufferLimit_data()
    {
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<bool>("stays");
        QTest::newRow("65536 without an end") << QByteArray(65536, 'x') << true;
        QTest::newRow("65537 without an end") << QByteArray(65537, 'x') << false;
        QTest::newRow("65537 with an end") << QByteArray(65536, 'x') + '\n' << false;
        QTest::newRow("a flood") << QByteArray(20'000'000, 'x') << false;
    }
    void bufferLimit()
    {
        QFETCH(QByteArray, sent);
        QFETCH(bool, stays);
        Program program(start());
        Program other(m_server->port());
        QTRY_COMPARE(m_server->clientCount(), 2);
        program.write(sent);
        if (stays) {
            QTRY_COMPARE(program.bytesToWrite(), 0);
            other.write("get\n"); // is behind in the server's queue
            QTRY_COMPARE(other.lines().size(), 2);
            QVERIFY(program.isConnected());
            program.write("x");
        }
        QTRY_VERIFY(program.isGone());
        QTRY_COMPARE(m_server->clientCount(), 1);
        QVERIFY(other.isConnected());
    }

    void changesArePushedOnce()
    {
        Program program(start());
        QTRY_COMPARE(program.lines(), QByteArrayList{emptySnapshot});
        m_live.setSourceLabel(u"Gym \"1\""_s);
        const QJsonObject envelope{{u"sport"_s, u"back\\slash"_s},
                                   {u"ä"_s, u"tab\t"_s},
                                   {u"\u2028"_s, u"\x7f"_s},
                                   {u"b"_s, u"\U0001F3C0"_s},
                                   {u"c"_s, 3}};
        m_live.ingest(envelope);
        m_live.ingest(envelope);
        m_live.ingest({{u"type"_s, u"heartbeat"_s}, {u"seq"_s, 1}});
        program.write("get\n");
        QTRY_COMPARE(program.lines().size(), 3);
        QCOMPARE(program.lines()[1], QJsonDocument(m_live.toJson()).toJson(QJsonDocument::Compact));
        QCOMPARE(fieldsOf(program.lines()[2]), fieldsOf(program.lines()[1]));
        m_live.clear();
        QTRY_COMPARE(program.lines().size(), 4);
        QCOMPARE(fieldsOf(program.lines()[3]).size(), 0);
    }

    void tenThousandRequestsInOneWrite()
    {
        Program program(start());
        Program other(m_server->port());
        QTRY_COMPARE(m_server->clientCount(), 2);
        int handled = 0;
        int handledBefore = 0; // the other's answer
        m_server->setCommandHandler([&](const QString &, const QJsonObject &) -> QJsonObject {
            if (++handled == 1) {
                other.write("get\n");
                other.flush();
            }
            return {{u"n"_s, handled}};
        });
        connect(&other, &QTcpSocket::readyRead, &other, [&] { handledBefore = handled; });
        program.write(QByteArray("echo\n").repeated(10000));
        QTRY_COMPARE(other.lines().size(), 2);
        QVERIFY2(handledBefore < 10000, "a flood makes others wait");
        shutdown(int(program.socketDescriptor()), SHUT_WR);
        QTRY_COMPARE_WITH_TIMEOUT(program.lines().size(), 10001, 20000);
        QVERIFY(program.lines().constLast().contains("\"n\":10000"));
        QTRY_VERIFY(program.isGone());
    }

    // It costs memory, nobody else's time, and finds all when it wakes up.
    void programThatNeverReads()
    {
        Program sleeper(start());
        sleeper.setReadBufferSize(1);
        Program other(m_server->port());
        QTRY_COMPARE(m_server->clientCount(), 2);
        m_live.ingest({{u"filler"_s, QString(30000, u'x')}});
        constexpr int changes = 500; // 15 MB, more than the system holds for it
        QList<qint64> delays;
        for (int score = 1; score <= changes; ++score) {
            QElapsedTimer timer;
            timer.start();
            setScore(score);
            const QByteArray wanted = "\"home_score\":\"" + QByteArray::number(score) + '"';
            QTRY_VERIFY(!other.lines().isEmpty() && other.lines().constLast().contains(wanted));
            delays.append(timer.nsecsElapsed() / 1000);
        }
        std::sort(delays.begin(), delays.end());
        qInfo("%d changes beside a program that doesn't read: %lld us in the middle, %lld at most", changes,
              delays[delays.size() / 2], delays.constLast());
        QVERIFY(delays[delays.size() / 2] < 20000);
        sleeper.setReadBufferSize(0);
        QTRY_COMPARE(sleeper.lines().size(), other.lines().size());
        QVERIFY(sleeper.lines() == other.lines());
    }

    void whatIsQueuedAtTheEndGetsItsTime()
    {
        Program reader(start());
        Program sleeper(m_server->port());
        sleeper.setReadBufferSize(1);
        QTRY_COMPARE(m_server->clientCount(), 2);
        const QString filler(60000, u'x');
        for (int i = 0; i < 200; ++i) {
            m_live.ingest({{u"filler"_s, filler + QString::number(i)}});
        }
        m_server->stop();
        QTRY_VERIFY(reader.isGone());
        QCOMPARE(reader.lines().size(), 201);
        for (int i = 0; i < 200; ++i) {
            QVERIFY(fieldsOf(reader.lines()[i + 1]).value(u"filler"_s).toString() == filler + QString::number(i));
        }
        skip(4s);
        QCOMPARE(m_server->findChildren<HostedClient *>().size(), 1);
        skip(1s);
        QTRY_VERIFY(m_server->findChildren<HostedClient *>().isEmpty());
    }

    void stopFromWithinAReply()
    {
        Program program(start());
        Program other(m_server->port());
        QTRY_COMPARE(m_server->clientCount(), 2);
        QSignalSpy counts(m_server.get(), &HostedServer::clientsChanged);
        int calls = 0;
        m_server->setCommandHandler([&](const QString &, const QJsonObject &) {
            ++calls;
            m_server->stop();
            return QJsonObject();
        });
        program.write("end\nend\nget\n");
        QTRY_VERIFY(program.isGone() && other.isGone());
        QCOMPARE(calls, 1);
        QCOMPARE(counts.size(), 1);
        QCOMPARE(counts.constFirst().constFirst().toInt(), 0);
        QVERIFY(!m_server->isListening());
    }

    void portTakenAndChanged()
    {
        QTcpServer owner;
        QVERIFY(owner.listen(QHostAddress::LocalHost));
        const quint16 port = start();
        Program program(port);
        QTRY_COMPARE(m_server->clientCount(), 1);
        QString error;
        QVERIFY(!m_server->start(owner.serverPort(), false, &error));
        QVERIFY2(error.startsWith(u"Could not listen on port %1: "_s.arg(owner.serverPort())) && error.size() > 35,
                 qPrintable(error));
        QVERIFY(!m_server->start(owner.serverPort(), false, nullptr));
        QVERIFY(!m_server->isListening() && m_server->port() == 0);
        QTRY_VERIFY(program.isGone());
        QVERIFY(m_server->start(port, false, nullptr)); // at once again, though it has just been in use
        Program back(port);
        QTRY_COMPARE(back.lines().size(), 1);
        QVERIFY(m_server->start(0, false, nullptr));
        QVERIFY(m_server->port() != port);
        QTRY_VERIFY(back.isGone());
        Program late(m_server->port());
        QTRY_COMPARE(late.lines().size(), 1);
    }

    void fewOpenFilesLeft()
    {
        const quint16 port = start();
        Program early(port);
        QTRY_COMPARE(early.lines().size(), 1);
        {
            const OpenFilesLeft limit(1 + 64); // the program's own, and those that are kept for OBS
            Program refused(port);
            QTRY_VERIFY(refused.isGone());
            QCOMPARE(refused.error(), QAbstractSocket::RemoteHostClosedError);
        }
        Program late(port);
        QTRY_COMPARE(late.lines().size(), 1);
        QVERIFY(early.isConnected());
    }

    void noOpenFileLeft()
    {
        const quint16 port = start();
        auto limit = std::make_unique<OpenFilesLeft>(1);
        Program program(port);
        QTRY_VERIFY(program.isConnected());
        for (int tries = 0; tries < 3; ++tries) {
            skip(1s);
        }
        QCOMPARE(program.lines().size(), 0);
        limit.reset();
        skip(800ms);
        QCOMPARE(program.lines().size(), 0);
        skip(200ms);
        QTRY_COMPARE(program.lines().size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestHostedServer)
#include "tst_hosted_server.moc"
