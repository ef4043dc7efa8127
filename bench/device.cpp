// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Holds a session with a device and says how long its answers take. Takes words on its input:
// "usb PATH PASSWORD", "http ADDRESS PASSWORD" and "ble BYTES MS" (of a write, and until it's
// confirmed; to the double of the helper, which answers with what came last) open a session; after
// it "bare-usb …", "bare-http …" and "bare-ble" prepare what "compare" compares with. "ask METHOD
// COUNT" calls a method so many times, one after the other, and prints the nanoseconds of each;
// "compare COUNT BYTES MS" does so for "getState", in requests of at least so many bytes, in turn
// with the bare carrier, each after a pause of up to so many milliseconds. The end of the input
// ends it.

#include "bench/Bare.h"
#include "bench/Stage.h"
#include "device/DeviceSession.h"
#include "device/ble/BleBridge.h"
#include "device/ble/BleLink.h"
#include "device/http/HttpLink.h"
#include "device/usb/UsbLink.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

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

    void openBle(int writePayload, std::chrono::milliseconds delay)
    {
        m_session.reset();
        m_bare.reset();
        m_helper = std::make_unique<bench::HelperThread>(writePayload, delay, m_latest);
        m_bridge = std::make_unique<BleBridge>();
        m_bridge->setHelperPath(m_helper->path());
        open(new BleLink(m_bridge.get(), u"id"_s, {}, nullptr), u"any"_s);
    }

    void openBare(const QString &carrier, const QString &where, const QString &password)
    {
        const auto ready = [](bool ok) { say({{u"state"_s, ok ? u"Ready"_s : u"Error"_s}}); };
        m_bare.reset();
        m_bare = carrier == u"bare-usb"    ? bench::bareUsb(where, password, ready)
                 : carrier == u"bare-http" ? bench::bareHttp(where, password, ready)
                                           : bench::bareBle(m_helper.get(), ready);
    }

    void ask(const QString &method, int count)
    {
        if (count == 0) {
            say({{u"took"_s, std::exchange(m_took, {})}});
            return;
        }
        call(method, [this, method, count] { ask(method, count - 1); });
    }

    void compare(int count, int bytes, int pause)
    {
        m_pause = pause;
        QJsonObject request{{u"id"_s, 1}, {u"method"_s, u"getState"_s}};
        m_params = bytes == 0 ? QJsonObject() : QJsonObject{{u"fill"_s, QString(bytes, u'x')}};
        request.insert(u"params"_s, m_params);
        m_bare->prepare(QJsonDocument(request).toJson(QJsonDocument::Compact));
        compareFrom(0, count * 2);
    }

private:
    void call(const QString &method, const std::function<void()> &then)
    {
        m_session->rpc()->call(method, m_params,
                               [this, then, begin = bench::now()](const RpcResult &result) {
                                   m_took.append(result.ok ? bench::now() - begin : -1);
                                   m_latest = result.result;
                                   then();
                               });
    }

    // Each of the two goes first as often as second.
    void compareFrom(int index, int count)
    {
        if (index == count) {
            m_params = {};
            say({{u"took"_s, std::exchange(m_took, {})},
                 {u"bare"_s, std::exchange(m_bareTook, {})}});
            return;
        }
        const auto next = [this, index, count] { compareFrom(index + 1, count); };
        QTimer::singleShot(index * 7 % (m_pause + 1), Qt::PreciseTimer, m_bare.get(),
                           [this, index, next] {
                               if ((index % 4 == 0) || (index % 4 == 3)) {
                                   call(u"getState"_s, next);
                                   return;
                               }
                               m_bare->exchange([this, next, begin = bench::now()](bool ok) {
                                   m_bareTook.append(ok ? bench::now() - begin : -1);
                                   next();
                               });
                           });
    }

    std::unique_ptr<bench::HelperThread> m_helper;
    std::unique_ptr<BleBridge> m_bridge;
    std::unique_ptr<DeviceSession> m_session;
    std::unique_ptr<bench::Bare> m_bare;
    int m_pause = 0;
    QJsonObject m_params;
    QJsonObject m_latest; // of an answer
    QJsonArray m_took;
    QJsonArray m_bareTook;
};

void obey(Asker &asker, const QStringList &words)
{
    const QString &order = words.first();
    if (order == u"usb") {
        asker.open(new UsbLink(words.value(1)), words.value(2));
    } else if (order == u"http") {
        asker.open(new HttpLink(words.value(1)), words.value(2));
    } else if (order == u"ble") {
        asker.openBle(words.value(1).toInt(), std::chrono::milliseconds(words.value(2).toInt()));
    } else if (order.startsWith(u"bare-")) {
        asker.openBare(order, words.value(1), words.value(2));
    } else if (order == u"ask") {
        asker.ask(words.value(1), words.value(2).toInt());
    } else if (order == u"compare") {
        asker.compare(words.value(1).toInt(), words.value(2).toInt(), words.value(3).toInt());
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
