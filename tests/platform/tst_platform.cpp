// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/BluetoothHelper.h"
#include "platform/PlatformKey.h"
#include "platform/PluginFolder.h"
#include "platform/SocketKeepAlive.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace tallyforge;
using namespace Qt::StringLiterals;

class TestPlatform : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The result is a folder that an update will replace: never one that holds others' plug-ins.
    void pluginRoot_data()
    {
        QTest::addColumn<QString>("dataFolder");
        QTest::addColumn<QString>("root");
        QTest::newRow("a user's plug-in") << u"plugins/tallyforge-obs/data/"_s << u"plugins/tallyforge-obs"_s;
        QTest::newRow("with dots") << u"plugins/other/../tallyforge-obs/data/."_s << u"plugins/tallyforge-obs"_s;
        QTest::newRow("system-wide") << u"share/obs/obs-plugins/tallyforge-obs/"_s << QString();
        QTest::newRow("data of all plug-ins") << u"plugins/data"_s << QString();
        QTest::newRow("unknown") << QString() << QString();
    }
    void pluginRoot()
    {
        QFETCH(QString, dataFolder);
        QFETCH(QString, root);
        const QTemporaryDir top;
        for (const auto &dir :
             {u"plugins/tallyforge-obs/data"_s, u"plugins/data"_s, u"plugins/tallyforge-obs/bin/64bit"_s,
              u"plugins/other"_s, u"share/obs/obs-plugins/tallyforge-obs"_s}) {
            QVERIFY(QDir(top.path()).mkpath(dir));
        }
        QFile module(top.filePath(u"plugins/tallyforge-obs/bin/64bit/tallyforge-obs.so"_s));
        QVERIFY(module.open(QIODevice::WriteOnly));
        QCOMPARE(platform::pluginRoot(dataFolder.isEmpty() ? QString() : top.filePath(dataFolder)),
                 root.isEmpty() ? QString() : top.filePath(root));
    }

    // Every package that was ever offered goes by this key.
    void platformKey()
    {
#ifdef __x86_64__
        QCOMPARE(platform::platformKey(), u"linux-x86_64"_s);
#else
        QSKIP("another processor");
#endif
    }

    void bluetoothHelper()
    {
        const QTemporaryDir top;
        QFile script(top.filePath(platform::bluetoothHelperFile()));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho \"$@\" $(ls /proc/$$/fd) >$0.new; mv $0.new $0.out\n");
        script.close();
        QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        const int inherited = open("/dev/null", O_RDONLY); // NOLINT(android-cloexec-open): as a careless host does
        QVERIFY(inherited > 2);
        QProcess process;
        platform::startBluetoothHelper(&process, script.fileName(), 65535, "a0");
        QFile out(script.fileName() + u".out"_s);
        QTRY_VERIFY(out.exists());
        QVERIFY(out.open(QIODevice::ReadOnly));
        const QByteArrayList words = out.readAll().simplified().split(' ');
        QCOMPARE(words.first(4), (QByteArrayList{"--port", "65535", "--token", "a0"}));
        QVERIFY(!words.sliced(4).contains(QByteArray::number(inherited)));
        close(inherited);
    }

    void keepAlive()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QTcpSocket socket;
        socket.connectToHost(server.serverAddress(), server.serverPort());
        QVERIFY(socket.waitForConnected());
        platform::enableKeepAlive(socket.socketDescriptor());
        const auto option = [&socket](int level, int name) {
            int value = -1;
            socklen_t size = sizeof value;
            getsockopt(static_cast<int>(socket.socketDescriptor()), level, name, &value, &size);
            return value;
        };
        QCOMPARE(option(SOL_SOCKET, SO_KEEPALIVE), 1);
        QCOMPARE(option(IPPROTO_TCP, TCP_KEEPIDLE), 5);
        QCOMPARE(option(IPPROTO_TCP, TCP_KEEPINTVL) * option(IPPROTO_TCP, TCP_KEEPCNT), 6);
    }
};

QTEST_GUILESS_MAIN(TestPlatform)
#include "tst_platform.moc"
