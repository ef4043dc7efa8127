// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Holds a session with a device and says how long its answers take. Takes words on its input:
// "usb PATH PASSWORD" opens a session, "ask METHOD COUNT" calls a method so many times, one after
// the other, and prints the nanoseconds of each; the end of the input ends it.

#include "bench/Stage.h"
#include "device/DeviceSession.h"
#include "device/usb/UsbLink.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <thread>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

void say(const QJsonObject &message)
{
    const QByteArray line = QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fflush(stdout);
}

class Asker
{
public:
    void open(DeviceLink *link, const QString &password)
    {
        m_session = std::make_unique<DeviceSession>(link, nullptr);
        QObject::connect(
            m_session.get(), &DeviceSession::stateChanged, m_session.get(),
            [](DeviceSession::State state, const QString &detail) {
                say({{u"state"_s, QVariant::fromValue(state).toString()}, {u"detail"_s, detail}});
            });
        m_session->start({password});
    }

    void ask(const QString &method, int count)
    {
        if (count == 0) {
            say({{u"took"_s, std::exchange(m_took, {})}});
            return;
        }
        m_session->rpc()->call(
            method, {}, [this, method, count, begin = bench::now()](const RpcResult &result) {
                m_took.append(result.ok ? bench::now() - begin : -1);
                ask(method, count - 1);
            });
    }

private:
    std::unique_ptr<DeviceSession> m_session;
    QJsonArray m_took;
};

void obey(Asker &asker, const QStringList &words)
{
    if (words.value(0) == u"usb") {
        asker.open(new UsbLink(words.value(1)), words.value(2));
    } else if (words.value(0) == u"ask") {
        asker.ask(words.value(1), words.value(2).toInt());
    }
}

void readOrders(Asker &asker)
{
    for (std::string line; std::getline(std::cin, line);) {
        const QStringList words = QString::fromStdString(line).split(u' ');
        QMetaObject::invokeMethod(qApp, [&asker, words] { obey(asker, words); });
    }
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Asker asker;
    std::thread orders(readOrders, std::ref(asker));
    QCoreApplication::exec();
    orders.join();
    return 0;
}
