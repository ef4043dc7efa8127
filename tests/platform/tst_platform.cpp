// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/PluginFolder.h"
#include "platform/SocketKeepAlive.h"

#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

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
