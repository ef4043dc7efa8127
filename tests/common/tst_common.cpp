// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "common/JsonText.h"
#include "common/LineBuffer.h"
#include "common/PrivateFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

QByteArray oldContent()
{
    return QByteArray(20000, 'a');
}

QByteArray newContent()
{
    return QByteArray(30000, 'b');
}

// Saves without end, until another process kills it.
int saveForever(const QString &path)
{
    for (;;) {
        savePrivateFile(path, oldContent());
        savePrivateFile(path, newContent());
    }
}

} // namespace

class TestCommon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void jsonText_data()
    {
        QTest::addColumn<QJsonValue>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole number") << QJsonValue(3.0) << u"3"_s;
        QTest::newRow("negative zero") << QJsonValue(-0.0) << u"0"_s;
        QTest::newRow("fraction") << QJsonValue(3.5) << u"3.5"_s;
        QTest::newRow("rounded to six digits") << QJsonValue(12345.678) << u"12345.7"_s;
        QTest::newRow("small, in exponent form") << QJsonValue(0.00001234567) << u"1.23457e-05"_s;
        QTest::newRow("beyond 64 bits") << QJsonValue(1e300) << u"1e+300"_s;
        QTest::newRow("exactly 2^63") << QJsonValue(9223372036854775808.0) << u"9.22337e+18"_s;
        QTest::newRow("lowest integer") << QJsonValue(-9223372036854775808.0) << u"-9223372036854775808"_s;
        QTest::newRow("boolean") << QJsonValue(false) << u"false"_s;
        QTest::newRow("string as it is") << QJsonValue(u" 7:42 "_s) << u" 7:42 "_s;
        QTest::newRow("null") << QJsonValue() << QString();
        QTest::newRow("array") << QJsonValue(QJsonArray{1}) << QString();
    }
    void jsonText()
    {
        QFETCH(QJsonValue, value);
        QTEST(jsonToText(value), "text");
    }

    void linesSurviveEverySplit()
    {
        const QByteArray stream = "one\r\n\n  two \nthree\nrest";
        for (qsizetype chunk = 1; chunk <= stream.size(); ++chunk) {
            LineBuffer buffer;
            QByteArrayList lines;
            for (qsizetype at = 0; at < stream.size(); at += chunk) {
                buffer.append(stream.mid(at, chunk));
                while (const auto line = buffer.takeLine()) {
                    lines.append(*line);
                }
            }
            QCOMPARE(lines, (QByteArrayList{"one", "", "two", "three"}));
            QCOMPARE(buffer.size(), 4);
        }
    }

    // Scanning or moving the waiting bytes again for each piece would take minutes here.
    void linesCostTimeInProportion()
    {
        QElapsedTimer timer;
        timer.start();
        LineBuffer buffer;
        const QByteArray piece(64, 'x');
        for (int i = 0; i < 500000; ++i) {
            buffer.append(piece);
            QVERIFY(!buffer.takeLine());
        }
        buffer.append("\n" + QByteArray(2000000, '\n'));
        int lines = 0;
        while (buffer.takeLine()) {
            ++lines;
        }
        QCOMPARE(lines, 2000001);
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    }

    void savesPrivately()
    {
        const QTemporaryDir dir;
        const QString path = dir.filePath(u"a/b/file"_s);
        QVERIFY(savePrivateFile(path, "x"));
        QCOMPARE(QFile::permissions(path) & ~QFile::Permissions(0xf000), QFile::ReadUser | QFile::WriteUser);
        QVERIFY(!savePrivateFile(dir.path(), "a folder stands there"));
    }

    void killedWhileSaving()
    {
        const QTemporaryDir dir;
        const QString path = dir.filePath(u"file"_s);
        QVERIFY(savePrivateFile(path, oldContent()));
        int sawNew = 0;
        // On a slow machine a save takes longer than the usual wait.
        for (int round = 0; round < 200 || (sawNew == 0 && round < 400); ++round) {
            QProcess victim;
            victim.start(QCoreApplication::applicationFilePath(), {u"--save-forever"_s, path});
            QVERIFY(victim.waitForStarted());
            // Past the start of the process the moment of death falls anywhere into a save.
            QVERIFY(QTest::qWaitFor([&] { return QDir(dir.path()).count() > 3 || sawNew > 0; }, 5000));
            victim.waitForFinished(round < 200 ? round % 13 : round);
            victim.kill();
            QVERIFY(victim.waitForFinished());
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray content = file.readAll();
            QVERIFY(content == oldContent() || content == newContent());
            sawNew += content == newContent();
            QVERIFY(!(file.permissions() & (QFile::ReadGroup | QFile::ReadOther)));
        }
        QVERIFY(sawNew > 0);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == u"--save-forever"_s) {
        return saveForever(app.arguments().at(2));
    }
    TestCommon test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_common.moc"
