// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Runs every example of docs/tcp-protocol.md against the plug-in's own server, so that the page
// stays true.

#include "core/HostedServer.h"
#include "plugin/App.h"
#include "tests/support/FakeModule.h"
#include "tests/support/HttpStub.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

namespace {

struct Example
{
    QString language;
    QStringList lines;
};

QList<Example> examplesOfThePage()
{
    QFile page(QStringLiteral(TALLYFORGE_DOCS "/tcp-protocol.md"));
    static_cast<void>(page.open(QIODevice::ReadOnly));
    static const QRegularExpression block(u"```(\\w*)\\n(.*?)\\n```"_s, QRegularExpression::DotMatchesEverythingOption);
    QList<Example> examples;
    for (const auto &match : block.globalMatch(QString::fromUtf8(page.readAll()))) {
        examples.append({match.captured(1), match.captured(2).split(u'\n')});
    }
    return examples;
}

// The time in a snapshot is never that of the page.
QString withoutTime(const QByteArray &line)
{
    static const QRegularExpression time(u"\"updated_at\":\"20[-:0-9T]{17}Z\""_s);
    return QString::fromUtf8(line).trimmed().replace(time, u"\"updated_at\":\"now\""_s);
}

class Client : public QProcess
{
public:
    Client(const QString &program, const QStringList &arguments)
    {
        setProcessChannelMode(MergedChannels);
        connect(this, &QProcess::readyRead, this, [this] { output += QString::fromUtf8(readAll()); });
        start(program, arguments);
    }
    ~Client() override
    {
        kill();
        waitForFinished();
    }
    QString output;
};

} // namespace

class TestTcpProtocol : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    HttpStub m_portal;
    QByteArray m_state = R"({"type":"state","sport":"basketball","fields":{"home_score":12,"away_score":7}})";

    static bool isLive() { return App::get()->sources()->isLive(); }

private Q_SLOTS:
    void init()
    {
        setConfigFolder(m_dir.path());
        QFile file(m_dir.filePath(u"settings.json"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(R"({"server_enabled":true,"selected_device":"tf-1"})");
        file.close();
        m_portal.answer = [this](const HttpRequest &request) {
            HttpReply reply;
            if (request.path == "/auth/me") {
                reply.body = R"({"user":{"email":"crew@venue.example"}})";
            } else if (request.path == "/devices") {
                reply.body = R"({"devices":[{"device_id":"tf-1","nickname":"Main gym"},{"device_id":"tf-2"}]})";
            } else if (request.path.contains("tf-1")) {
                reply.body = m_state;
            }
            return reply;
        };
        App::init(m_portal.url());
        QTRY_VERIFY(isLive());
    }
    void cleanup() { App::shutdown(); }

    void conversations()
    {
        int count = 0;
        for (const QList<Example> examples = examplesOfThePage(); const Example &example : examples) {
            if (!example.language.isEmpty()) {
                continue;
            }
            QCOMPARE(example.lines.size(), 2);
            const QString wanted = withoutTime(example.lines[1].toUtf8().sliced(2));
            if (wanted.contains(u"unavailable"_s)) {
                App::get()->server()->setCommandHandler({});
            }
            QTcpSocket program;
            program.connectToHost(u"127.0.0.1"_s, 9001);
            program.write(example.lines[0].sliced(2).toUtf8() + '\n');
            QStringList lines;
            const auto last = [&] {
                while (program.canReadLine()) {
                    lines.append(withoutTime(program.readLine()));
                }
                return lines.size() > 1 ? lines.constLast() : QString();
            };
            QTRY_COMPARE(last(), wanted);
            ++count;
        }
        QVERIFY2(count >= 10, qPrintable(QString::number(count)));
        QCOMPARE(App::get()->sources()->deviceId(), u"tf-2"_s);
        QCOMPARE(App::get()->settings().selectedDevice(), u"tf-2"_s);
    }

    void commandLines()
    {
        QStringList outputs;
        for (const QList<Example> examples = examplesOfThePage(); const Example &example : examples) {
            if (example.language == u"sh"_s) {
                Client shell(u"sh"_s, {u"-c"_s, example.lines.join(u'\n')});
                const bool ends = example.lines.constFirst().contains(u" -N "_s);
                QTRY_VERIFY2(ends ? shell.state() == QProcess::NotRunning : shell.output.contains(u'\n'),
                             qPrintable(shell.output));
                outputs.append(shell.output);
            }
        }
        QCOMPARE(outputs.size(), 2);
        QVERIFY2(outputs[0].contains(u"\"home_score\":\"12\""_s), qPrintable(outputs[0]));
        QVERIFY2(outputs[1].contains(u"\"message\":\"Live from tf-1\""_s), qPrintable(outputs[1]));
    }

    void scripts_data()
    {
        QTest::addColumn<QString>("interpreter");
        QTest::addColumn<QString>("script");
        QTest::newRow("Python") << u"python3"_s << u"follow.py"_s;
        QTest::newRow("JavaScript") << u"node"_s << u"follow.mjs"_s;
    }
    void scripts()
    {
        QFETCH(QString, interpreter);
        QFETCH(QString, script);
        Client follower(interpreter, {QStringLiteral(TALLYFORGE_DOCS "/examples/") + script});
        QTRY_COMPARE_WITH_TIMEOUT(follower.output, u"12 : 7\n"_s, 20000);
        m_state.replace("12", "13"); // for the polls to come
        App::get()->live().ingest({{u"home_score"_s, 13}});
        QTRY_COMPARE(follower.output, u"12 : 7\n13 : 7\n"_s);
        m_state.replace("13", "12");
        App::get()->settings().setServerEnabled(false);
        QSignalSpy changes(App::get(), &App::serverStateChanged);
        App::get()->applyServerSettings();
        QVERIFY(!App::get()->server()->isListening() && !changes.isEmpty());
        QTRY_COMPARE(follower.state(), QProcess::NotRunning);
        QCOMPARE(follower.exitCode(), 0);
    }

    void scriptThatAsks_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("output");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("device");
        QTest::newRow("list") << QStringList() << u"tf-1\tMain gym (tf-1)\ntf-2\ttf-2\n"_s << 0 << u"tf-1"_s;
        QTest::newRow("other device") << QStringList{u"tf-2"_s} << QString() << 0 << u"tf-2"_s;
        QTest::newRow("unknown device") << QStringList{u"x"_s} << u"unknown_device\n"_s << 1 << u"tf-1"_s;
    }
    void scriptThatAsks()
    {
        QFETCH(QStringList, arguments);
        Client asker(u"python3"_s, QStringList{QStringLiteral(TALLYFORGE_DOCS "/examples/ask.py")} + arguments);
        QTRY_COMPARE_WITH_TIMEOUT(asker.state(), QProcess::NotRunning, 20000);
        QTEST(asker.output, "output");
        QTEST(asker.exitCode(), "exitCode");
        QTEST(App::get()->sources()->deviceId(), "device");
    }

    void takenPortStaysEnabled()
    {
        QTcpServer owner;
        QVERIFY(owner.listen(QHostAddress::LocalHost));
        App::get()->settings().setServerPort(owner.serverPort() + 65536); // cut to 16 bits
        QSignalSpy changes(App::get(), &App::serverStateChanged);
        App::get()->applyServerSettings();
        QVERIFY(!App::get()->server()->isListening() && !changes.isEmpty());
        QVERIFY(App::get()->settings().serverEnabled());
        owner.close();
        App::get()->applyServerSettings();
        QVERIFY(App::get()->server()->isListening());
    }
};

QTEST_GUILESS_MAIN(TestTcpProtocol)
#include "tst_tcp_protocol.moc"
