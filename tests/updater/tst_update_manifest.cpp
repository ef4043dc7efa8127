// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/UpdateManifest.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QUrl>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

const char *const incomplete = "The update information is incomplete.";
const char *const noVersion = "The update information has no valid version.";
const char *const unreadable = "The update information was not readable.";
const char *const newerPlugin = "This update needs a newer Tallyforge plugin than the one installed. "
                                "Download the installer from the Tallyforge website.";
const char *const notHere = "Version 1.1.0 is out, but not available for this computer yet.";

// Changes stand in JSON with single quotes; null takes a key away.
QJsonObject changed(QJsonObject object, const QJsonObject &changes)
{
    for (auto it = changes.begin(); it != changes.end(); ++it) {
        object.insert(it.key(), it.value());
        if (it.value().isNull()) {
            object.remove(it.key());
        }
    }
    return object;
}

QJsonObject json(QByteArray text)
{
    return QJsonDocument::fromJson(text.replace('\'', '"')).object();
}

// A manifest of 1.1.0 with changes, those of its package below "package".
ManifestResult parse(const QByteArray &changes, const QString &obsVersion = u"31.0.0"_s)
{
    QJsonObject change = json(changes);
    QJsonObject package{{u"url"_s, u"https://d.example/p.zip"_s}, {u"sha256"_s, u"0A"_s.repeated(32)}, {u"size"_s, 7}};
    package = changed(package, change.take(u"package"_s).toObject());
    const QJsonObject whole{{u"schema"_s, 1},
                            {u"version"_s, u"1.1.0"_s},
                            {u"packages"_s, QJsonObject{{u"linux-x86_64"_s, package}, {u"macos-arm64"_s, 5}}}};
    UpdateConfig config;
    config.currentVersion = u"1.0.1"_s;
    config.platformKey = u"linux-x86_64"_s;
    config.obsVersion = obsVersion;
    const bool garbage = change.isEmpty() && !changes.isEmpty() && !changes.contains("package");
    return parseManifest(garbage ? changes : QJsonDocument(changed(whole, change)).toJson(), config);
}

} // namespace

class TestUpdateManifest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ordersVersions()
    {
        for (const char *line :
             {"1.2 = 1.2.0", "v1.2.3 = 1.2.3", "V1 = 1.0.0.0", "1.2.3-beta < 1.2.3", "1.2.3-a = 1.2.3-b",
              "1.9.9 < 1.10.0", "1.2.3-9 < 1.2.4-1", "1.2.3 < 1.2.3.1", "1.x.3 = 1.0.3", "1.99999999999.1 = 1.0.1",
              "1.1 < 1.2147483647", "1.2147483648 < 1.1", "1..3 = 1.0.3", "vv1 = 0", "1-2-3 < 1", "- < 0"}) {
            const QStringList words = QString::fromLatin1(line).split(u' ');
            const int order = words[1] == u"<" ? -1 : 0;
            QVERIFY2(compareVersions(words[0], words[2]) == order, line);
            QVERIFY2(compareVersions(u' ' + words[2] + u'\n', words[0]) == -order, line);
        }
    }

    void allowsAddresses()
    {
        for (const char *url :
             {"https://a.example/x", "HTTPS://A.example", "http://127.0.0.1:80/x", "http://localhost"}) {
            QVERIFY2(urlAllowed(QUrl(QString::fromLatin1(url))), url);
        }
        for (const char *url : {"http://a.example", "http://127.0.0.1.a.example", "http://127.0.0.2", "http://[::1]/",
                                "http://localhost@b.example", "https://", "https:x", "file:///etc/passwd",
                                "ftp://localhost", "//localhost/x", "localhost", "", "https://%"}) {
            QVERIFY2(!urlAllowed(QUrl(QString::fromLatin1(url))), url);
        }
    }

    void judges_data()
    {
        QTest::addColumn<QByteArray>("changes");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *name, const char *changes, const char *outcome) {
            QTest::newRow(name) << QByteArray(changes) << QString::fromUtf8(outcome);
        };
        row("whole", "", "available");
        row("cut off", "{\"version\":", unreadable);
        row("array", "[]", unreadable);
        row("two objects", "{} {}", unreadable);
        row("no UTF-8", "{\"version\":\"\xff\"}", unreadable);
        QTest::newRow("nested too deep") << QByteArray(1 << 20, '[') << QString::fromUtf8(unreadable);
        row("no schema", "{'schema':null}", "available");
        row("later schema, before all else", "{'schema':2,'version':7}", newerPlugin);
        row("schema in words", "{'schema':'1'}", newerPlugin);
        row("no version", "{'version':null}", noVersion);
        row("two parts", "{'version':'1.1'}", noVersion);
        row("version with more behind it", "{'version':'1.1.0 <b>'}", noVersion);
        row("version with a line break", "{'version':'1.1.0\\n'}", noVersion);
        row("digits of another script", "{'version':'١.1.0'}", noVersion);
        row("present version, no packages", "{'version':'1.0.1','packages':null}", "known");
        row("pre-release of the present version", "{'version':'1.0.1-rc.1'}", "known");
        row("no packages", "{'packages':null}", notHere);
        row("packages of another type", "{'packages':[1]}", notHere);
        row("empty package", "{'packages':{'linux-x86_64':{}}}", notHere);
        row("only for another processor", "{'packages':{'linux-arm64':{'url':'https://d.example'}}}", notHere);
        row("HTTP to a stranger", "{'package':{'url':'http://d.example/p.zip'}}", incomplete);
        row("HTTP to this computer", "{'package':{'url':'http://localhost/p.zip'}}", "available");
        row("address of another type", "{'package':{'url':5}}", incomplete);
        row("no sum", "{'package':{'sha256':null}}", incomplete);
        row("sum too short", "{'package':{'sha256':'0a'}}", incomplete);
        row("OBS new enough", "{'min_obs':'30.1'}", "available");
        row("OBS just new enough", "{'min_obs':'31.0.0'}", "available");
        row("OBS too old", "{'min_obs':'32.%3'}", "Version 1.1.0 needs OBS 32.%3 or newer (this is OBS 31.0.0).");
        row("faulty package before OBS", "{'min_obs':'99','package':{'url':''}}", incomplete);
    }
    void judges()
    {
        QFETCH(QByteArray, changes);
        QFETCH(QString, outcome);
        const ManifestResult result = parse(changes);
        QCOMPARE(result.valid ? result.available ? u"available"_s : u"known"_s : result.message, outcome);
        QCOMPARE(result.message.isEmpty(), result.valid);
        QVERIFY(result.valid || !result.available);
    }

    void keepsWhatIsShown()
    {
        const UpdateInfo info =
            parse("{'released':'2026-10-01','min_obs':'30.1','notes':['One.',2,'Three.'],'package':{'size':7.9}}").info;
        QCOMPARE((QStringList{info.version, info.released, info.minObs, info.notes, info.url, info.sha256}),
                 (QStringList{u"1.1.0"_s, u"2026-10-01"_s, u"30.1"_s, u"One.\n\nThree."_s, u"https://d.example/p.zip"_s,
                              u"0a"_s.repeated(32)}));
        QCOMPARE(info.size, 7);
        QCOMPARE(parse("{'package':{'size':-5}}").info.size, 0);
        QCOMPARE(parse("{'package':{'size':1e300}}").info.size, qint64(1) << 53);
        QCOMPARE(parse("{'notes':'All in one.'}").info.notes, u"All in one."_s);
        QVERIFY(parse("{'min_obs':'99'}", {}).available); // OBS of an unknown version
    }
};

QTEST_GUILESS_MAIN(TestUpdateManifest)
#include "tst_update_manifest.moc"
