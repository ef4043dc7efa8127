// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/UpdateManifest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QUrl>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

const char *const incomplete = "The update information is incomplete.";
const char *const noVersion = "The update information has no valid version.";
const char *const newerPlugin = "This update needs a newer Tallyforge plugin than the one installed. "
                                "Download the installer from the Tallyforge website.";
const char *const notHere = "Version 1.1.0 is out, but not available for this computer yet.";

QJsonObject package(const QJsonObject &change)
{
    QJsonObject result{{u"url"_s, u"https://d.example/p.zip"_s}, {u"sha256"_s, u"0a"_s.repeated(32)}, {u"size"_s, 7}};
    for (auto it = change.begin(); it != change.end(); ++it) {
        result.insert(it.key(), it.value());
    }
    return {{u"linux-x86_64"_s, result}, {u"macos-arm64"_s, QJsonObject{{u"url"_s, u"https://other.example"_s}}}};
}

UpdateConfig config()
{
    UpdateConfig config;
    config.currentVersion = u"1.0.1"_s;
    config.platformKey = u"linux-x86_64"_s;
    config.obsVersion = u"31.0.0"_s;
    return config;
}

// A manifest of 1.1.0 with some keys changed; null takes one away.
ManifestResult parse(const QJsonObject &change, const UpdateConfig &config = ::config())
{
    QJsonObject manifest{{u"schema"_s, 1}, {u"version"_s, u"1.1.0"_s}, {u"packages"_s, package({})}};
    for (auto it = change.begin(); it != change.end(); ++it) {
        if (it.value().isNull()) {
            manifest.remove(it.key());
        } else {
            manifest.insert(it.key(), it.value());
        }
    }
    return parseManifest(QJsonDocument(manifest).toJson(), config);
}

} // namespace

class TestUpdateManifest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void versions_data()
    {
        QTest::addColumn<QString>("line");
        for (const char *line :
             {"1.2 = 1.2.0", "v1.2.3 = 1.2.3", "V1 = 1.0.0.0", "1.2.3-beta < 1.2.3", "1.2.3-a = 1.2.3-b",
              "1.9.9 < 1.10.0", "1.2.3-9 < 1.2.4-1", "1.2.3 < 1.2.3.1", "1.x.3 = 1.0.3", "1.99999999999.1 = 1.0.1",
              "1.2147483647 > 1.1", "1.2147483648 < 1.1", "1..3 = 1.0.3", "vv1 = 0", "30.1 < 31.0.0", "1-2-3 < 1",
              "- < 0", "31.0.0-rc1 < 31.0.0"}) {
            QTest::newRow(line) << QString::fromLatin1(line);
        }
    }
    void versions()
    {
        QFETCH(QString, line);
        const QStringList words = line.split(u' ');
        const int order = words[1] == u"<" ? -1 : int(words[1] == u">");
        QCOMPARE(compareVersions(words[0], words[2]), order);
        QCOMPARE(compareVersions(u"  "_s + words[2] + u'\n', words[0]), -order);
    }

    void addresses_data()
    {
        QTest::addColumn<bool>("allowed");
        for (const char *url :
             {"https://a.example/x", "HTTPS://A.example", "http://127.0.0.1:80/x", "http://localhost"}) {
            QTest::newRow(url) << true;
        }
        for (const char *url :
             {"http://a.example", "http://127.0.0.1.a.example", "http://localhost.a.example", "http://127.0.0.2",
              "http://[::1]/", "http://a.example@b.example", "https://", "https:x", "file:///etc/passwd",
              "ftp://localhost", "//localhost/x", "localhost", "", "https://%"}) {
            QTest::newRow(url) << false;
        }
    }
    void addresses()
    {
        QFETCH(bool, allowed);
        QCOMPARE(urlAllowed(QUrl(QString::fromLatin1(QTest::currentDataTag()))), allowed);
    }

    void manifests_data()
    {
        QTest::addColumn<QJsonObject>("change");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *name, const QJsonObject &change, const char *message,
                            const QString &outcome = u"refused"_s) {
            QTest::newRow(name) << change << QString::fromUtf8(message) << outcome;
        };
        const QString available = u"available"_s;
        const QString known = u"known"_s;
        const auto fits = [](const QJsonObject &change) { return QJsonObject{{u"packages"_s, package(change)}}; };

        row("whole", {}, "", available);
        row("no schema", {{u"schema"_s, QJsonValue::Null}}, "", available);
        row("later schema", {{u"schema"_s, 2}, {u"version"_s, 7}}, newerPlugin);
        row("schema in words", {{u"schema"_s, u"1"_s}}, newerPlugin);
        row("no version", {{u"version"_s, QJsonValue::Null}}, noVersion);
        row("two parts", {{u"version"_s, u"1.1"_s}}, noVersion);
        row("version with more behind it", {{u"version"_s, u"1.1.0 <b>"_s}}, noVersion);
        row("version with a line break", {{u"version"_s, u"1.1.0\n"_s}}, noVersion);
        row("digits of another script", {{u"version"_s, u"١.1.0"_s}}, noVersion);
        row("the present version, no packages", {{u"version"_s, u"1.0.1"_s}, {u"packages"_s, QJsonValue::Null}}, "",
            known);
        row("pre-release of the present version", {{u"version"_s, u"1.0.1-rc.1"_s}}, "", known);
        row("no packages", {{u"packages"_s, QJsonValue::Null}}, notHere);
        row("packages of another type", {{u"packages"_s, QJsonArray{1}}}, notHere);
        row("empty package", {{u"packages"_s, QJsonObject{{u"linux-x86_64"_s, QJsonObject()}}}}, notHere);
        row("only for another processor",
            {{u"packages"_s, QJsonObject{{u"linux-arm64"_s, package({})[u"linux-x86_64"_s]}}}}, notHere);
        row("HTTP to a stranger", fits({{u"url"_s, u"http://d.example/p.zip"_s}}), incomplete);
        row("HTTP to this computer", fits({{u"url"_s, u"http://localhost/p.zip"_s}}), "", available);
        row("no address", fits({{u"url"_s, 5}}), incomplete);
        row("sum in capitals", fits({{u"sha256"_s, u"0A"_s.repeated(32)}}), "", available);
        row("sum too short", fits({{u"sha256"_s, u"0a"_s.repeated(31)}}), incomplete);
        row("sum with a line break", fits({{u"sha256"_s, u"0a"_s.repeated(32) + u'\n'}}), incomplete);
        row("OBS new enough", {{u"min_obs"_s, u"30.1"_s}}, "", available);
        row("OBS too old", {{u"min_obs"_s, u"%1.31.1"_s}}, "", available);
        row("OBS much too old", {{u"min_obs"_s, u"32.%3"_s}},
            "Version 1.1.0 needs OBS 32.%3 or newer (this is OBS 31.0.0).");
        row("faulty package before OBS", {{u"min_obs"_s, u"99"_s}, {u"packages"_s, package({{u"url"_s, u""_s}})}},
            incomplete);
    }
    void manifests()
    {
        QFETCH(QJsonObject, change);
        QFETCH(QString, message);
        QFETCH(QString, outcome);
        const ManifestResult result = parse(change);
        QCOMPARE(result.message, message);
        QCOMPARE(result.valid, outcome != u"refused");
        QCOMPARE(result.available, outcome == u"available");
    }

    void unreadable_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        for (const char *bytes : {"", "[]", "{\"version\":\"1.1.0\"", "<html>", "\xff\xfe{}", "{} {}"}) {
            QTest::newRow(bytes) << QByteArray(bytes);
        }
        QTest::newRow("nested too deep") << QByteArray(1 << 20, '[');
    }
    void unreadable()
    {
        QFETCH(QByteArray, bytes);
        QCOMPARE(parseManifest(bytes, config()).message, u"The update information was not readable."_s);
    }

    void sizes_data()
    {
        QTest::addColumn<QJsonValue>("size");
        QTest::addColumn<qint64>("expected");
        QTest::newRow("fraction") << QJsonValue(7.9) << qint64(7);
        QTest::newRow("negative") << QJsonValue(-5) << qint64(0);
        QTest::newRow("text") << QJsonValue(u"7"_s) << qint64(0);
        QTest::newRow("beyond all whole numbers") << QJsonValue(1e300) << (qint64(1) << 53);
    }
    void sizes()
    {
        QFETCH(QJsonValue, size);
        QFETCH(qint64, expected);
        QCOMPARE(parse({{u"packages"_s, package({{u"size"_s, size}})}}).info.size, expected);
    }

    void keepsWhatIsShown()
    {
        const UpdateInfo info = parse({{u"released"_s, u"2026-10-01"_s},
                                       {u"min_obs"_s, u"30.1"_s},
                                       {u"notes"_s, QJsonArray{u"One."_s, 2, u"Three."_s}},
                                       {u"packages"_s, package({{u"sha256"_s, u"0A"_s.repeated(32)}})}})
                                    .info;
        QCOMPARE((QStringList{info.version, info.released, info.minObs, info.notes, info.url, info.sha256}),
                 (QStringList{u"1.1.0"_s, u"2026-10-01"_s, u"30.1"_s, u"One.\n\nThree."_s, u"https://d.example/p.zip"_s,
                              u"0a"_s.repeated(32)}));
        QCOMPARE(parse({{u"notes"_s, u"All in one."_s}}).info.notes, u"All in one."_s);
        UpdateConfig unknown = config();
        unknown.obsVersion.clear();
        QVERIFY(parse({{u"min_obs"_s, u"99"_s}}, unknown).available);
    }
};

QTEST_GUILESS_MAIN(TestUpdateManifest)
#include "tst_update_manifest.moc"
