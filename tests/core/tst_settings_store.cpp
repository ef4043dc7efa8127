// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/SettingsStore.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using namespace tallyforge;
using namespace Qt::StringLiterals;

class TestSettingsStore : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString write(const QByteArray &content)
    {
        QFile file(m_dir.filePath(u"settings.json"_s));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(content);
        }
        return file.fileName();
    }

private Q_SLOTS:
    void damagedFilesReadAsDefaults_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("truncated") << QByteArray(R"({"server_port": 9)");
        QTest::newRow("array") << QByteArray(R"([{"server_port": 9}])");
        QTest::newRow("wrong types") << QByteArray(
            R"({"selected_device":1,"server_enabled":"yes","server_port":"9","server_allow_network":1,
                "share_connection":"no","auto_check_updates":0,"last_update_check":"x",
                "routes":[],"lan":"x"})");
        QTest::newRow("wrong types inside")
            << QByteArray(R"({"routes":{"d":5},"lan":{"d":[1]},"last_update_check":1e300})");
    }
    void damagedFilesReadAsDefaults()
    {
        QFETCH(QByteArray, content);
        SettingsStore store;
        store.setPath(write(content));
        store.load();
        QCOMPARE(store.selectedDevice(), QString());
        QVERIFY(!store.serverEnabled());
        QCOMPARE(store.serverPort(), 9001);
        QVERIFY(!store.serverAllowNetwork());
        QVERIFY(store.shareConnection());
        QVERIFY(store.autoCheckUpdates());
        QCOMPARE(store.lastUpdateCheck(), 0);
        QCOMPARE(store.preferredRoute(u"d"_s), u"cloud"_s);
        QVERIFY(store.lanDevice(u"d"_s).host.isEmpty() && store.lanDevice(u"d"_s).token.isEmpty());
    }

    void keepsEverythingOverARestart()
    {
        SettingsStore store;
        store.setPath(write(R"({"unknown":{"kept":[1]},"lan":{"x":{"host":"h","token":"t"}}})"));
        store.load();
        store.setSelectedDevice(u"d"_s);
        store.setServerEnabled(true);
        store.setServerPort(70000);
        store.setServerAllowNetwork(true);
        store.setShareConnection(false);
        store.setAutoCheckUpdates(false);
        store.setLastUpdateCheck(1795392000);
        store.setLastUsbPort(u"/dev/ttyACM0"_s);
        store.setPreferredRoute(u"d"_s, u"lan"_s);
        store.setLanDevice(u"d"_s, {u"10.0.0.5"_s, u"secret"_s, u"Gym"_s});

        SettingsStore again;
        again.setPath(m_dir.filePath(u"settings.json"_s));
        again.load();
        QCOMPARE(again.selectedDevice(), u"d"_s);
        QVERIFY(again.serverEnabled() && again.serverAllowNetwork());
        QCOMPARE(again.serverPort(), 70000);
        QVERIFY(!again.shareConnection() && !again.autoCheckUpdates());
        QCOMPARE(again.lastUpdateCheck(), 1795392000);
        QCOMPARE(again.preferredRoute(u"d"_s), u"lan"_s);
        QCOMPARE(again.preferredRoute(u"x"_s), u"cloud"_s);
        QCOMPARE(again.lanDeviceIds(), (QStringList{u"d"_s, u"x"_s}));
        QCOMPARE(again.lanDevice(u"d"_s).name, u"Gym"_s);
        QCOMPARE(again.lanDevice(u"x"_s).host, u"h"_s);

        QFile file(m_dir.filePath(u"settings.json"_s));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QVERIFY(text.contains("\n    \"unknown\": {"));
        QVERIFY(text.contains("\"last_usb_port\": \"/dev/ttyACM0\""));
    }

    void withoutAPathNothingIsWritten()
    {
        SettingsStore store;
        store.load();
        store.setSelectedDevice(u"d"_s);
        QCOMPARE(store.selectedDevice(), u"d"_s);
    }
};

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_settings_store.moc"
