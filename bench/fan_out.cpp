// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// How long a changed value takes to its last reader, by way of the hosted server and of others in
// turn. Prints one object of JSON with nanoseconds for each way.
// Usage: bench-fan_out READERS ROUNDS [MQTT_PORT BROKER_PORT]
//        bench-fan_out READERS: memory and CPU time of the hosted server alone

#include "bench/LineReaders.h"
#include "core/HostedServer.h"
#include "core/LiveData.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <vector>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace tallyforge;
using namespace tallyforge::bench;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int fieldCount = 24;
constexpr int warmUps = 5;
constexpr int firstValue = 10000; // so that all are of one length
constexpr auto settleTime = 500ms;

void runEventLoop(std::chrono::milliseconds duration)
{
    QEventLoop loop;
    QTimer::singleShot(duration, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

QJsonObject envelope(int value)
{
    QJsonObject fields{{u"home_score"_s, firstValue + value}};
    for (int i = 1; i < fieldCount; ++i) {
        fields.insert(u"field_%1"_s.arg(i), u"text %1"_s.arg(i));
    }
    return {{u"type"_s, u"state"_s}, {u"sport"_s, u"basketball"_s}, {u"fields"_s, fields}};
}

// A way from a value to all readers.
class Way
{
public:
    Way() = default;
    virtual ~Way() = default;
    Way(const Way &) = delete;
    Way &operator=(const Way &) = delete;

    /// Has all readers connected.
    virtual void open(LineReaders &readers, int count) = 0;
    /// Sends a change on its way, and gives the moment from which that counts: when the live data
    /// have changed, or when the line that tells of it is ready to be sent.
    virtual long long publish(const QJsonObject &change, const QByteArray &line) = 0;
};

class Hosted : public Way
{
public:
    void open(LineReaders &readers, int count) override
    {
        m_live.setSourceLabel(u"Main gym"_s);
        m_live.ingest(envelope(0));
        QString error;
        if (!m_server.start(0, false, &error)) {
            qFatal("%s", qPrintable(error));
        }
        addSleeper();
        const int wanted = m_server.clientCount() + count;
        readers.connect(m_server.port(), uint32_t(count), false);
        awaitClients(wanted);
    }
    long long publish(const QJsonObject &change, const QByteArray &) override
    {
        m_live.ingest(change);
        return m_changed;
    }

protected:
    virtual void addSleeper() {}
    void awaitClients(int count) const
    {
        while (m_server.clientCount() < count) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    LiveData &live() { return m_live; }
    [[nodiscard]] uint16_t port() const { return m_server.port(); }

private:
    LiveData m_live;
    long long m_changed = 0;
    // Made before the server, so that it hears of a change first.
    const QMetaObject::Connection m_watch =
        QObject::connect(&m_live, &LiveData::changed, &m_live, [this] { m_changed = nowNs(); });
    HostedServer m_server{&m_live};
};

// Beside one more program, which never reads and has had all that the system holds for it.
class HostedWithSleeper final : public Hosted
{
public:
    ~HostedWithSleeper() override { close(m_sleeper); }

protected:
    void addSleeper() override
    {
        m_sleeper = connectTo(port());
        awaitClients(1);
        const QString filler(60000, u'x');
        for (int i = 0; i < 400; ++i) {
            live().ingest({{u"filler"_s, filler + QString::number(i)}});
        }
        live().clear();
        live().ingest(envelope(0));
    }

private:
    int m_sleeper = -1;
};

// The least that any server must do.
class BareLoop final : public Way
{
public:
    void open(LineReaders &readers, int count) override
    {
        QTcpServer listener;
        listener.setListenBacklogSize(count);
        listener.listen(QHostAddress::LocalHost);
        readers.connect(listener.serverPort(), uint32_t(count), false);
        for (int i = 0; i < count; ++i) {
            const int fd = accept(int(listener.socketDescriptor()), nullptr, nullptr);
            const int on = 1;
            setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
            m_sockets.push_back(fd);
        }
    }
    ~BareLoop() override
    {
        for (const int fd : m_sockets) {
            close(fd);
        }
    }
    long long publish(const QJsonObject &, const QByteArray &line) override
    {
        const long long begin = nowNs();
        for (const int fd : m_sockets) {
            if (send(fd, line.constData(), size_t(line.size()), MSG_DONTWAIT | MSG_NOSIGNAL) !=
                line.size()) {
                qFatal("A socket is full.");
            }
        }
        return begin;
    }

private:
    std::vector<int> m_sockets;
};

// Another program that passes on what one publisher sends.
class Broker final : public Way
{
public:
    Broker(uint16_t port, bool mqtt)
        : m_port(port)
        , m_mqtt(mqtt)
        , m_publisher(connectTo(port))
    {
        if (m_mqtt) {
            greetMqtt(m_publisher, 0);
        }
    }
    ~Broker() override { close(m_publisher); }
    void open(LineReaders &readers, int count) override
    {
        readers.connect(m_port, uint32_t(count), m_mqtt);
    }
    long long publish(const QJsonObject &, const QByteArray &line) override
    {
        const QByteArray packet = m_mqtt ? retained(line) : line;
        const long long begin = nowNs();
        if (write(m_publisher, packet.constData(), size_t(packet.size())) != packet.size()) {
            qFatal("The broker doesn't read.");
        }
        return begin;
    }

private:
    static QByteArray retained(const QByteArray &line)
    {
        const qsizetype size = line.size() + 3;
        const char header[] = {0x31, char(size % 128 | 0x80), char(size / 128), 0, 1, 's'};
        return QByteArray(header, sizeof header) + line;
    }

    const uint16_t m_port;
    const bool m_mqtt;
    const int m_publisher;
};

void waitFor(const LineReaders &readers)
{
    bool isThere = false;
    const QSocketNotifier report(readers.reports(), QSocketNotifier::Read);
    QObject::connect(&report, &QSocketNotifier::activated, &report, [&isThere] { isThere = true; });
    while (!isThere) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

// In turn, so that whatever else the machine does falls on all ways alike.
QJsonObject race(LineReaders &readers, int count, int rounds, uint16_t mqttPort,
                 uint16_t brokerPort)
{
    Hosted hosted;
    HostedWithSleeper sleeper;
    BareLoop bare;
    std::unique_ptr<Broker> mqtt;
    std::unique_ptr<Broker> broker;
    std::map<QString, Way *> ways{
        {u"hosted"_s, &hosted}, {u"sleeper"_s, &sleeper}, {u"bare"_s, &bare}};
    if (mqttPort != 0) {
        mqtt = std::make_unique<Broker>(mqttPort, true);
        ways[u"mqtt"_s] = mqtt.get();
    }
    if (brokerPort != 0) {
        broker = std::make_unique<Broker>(brokerPort, false);
        ways[u"broker"_s] = broker.get();
    }
    for (const auto &[name, way] : ways) {
        way->open(readers, count);
    }
    runEventLoop(settleTime);

    std::map<QString, QJsonArray> took;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> pause(1, 3);
    for (int round = 1; round <= warmUps + rounds; ++round) {
        const QJsonObject change = envelope(round);
        LiveData same;
        same.setSourceLabel(u"Main gym"_s);
        same.ingest(change);
        const QByteArray line = same.toCompactJson() + '\n';
        for (const auto &[name, way] : ways) {
            readers.expect(uint32_t(count));
            runEventLoop(std::chrono::milliseconds(pause(random))); // the readers fall asleep
            const long long begin = way->publish(change, line);
            waitFor(readers); // with the event loop, in which the server goes on
            const long long duration = readers.awaitLast() - begin;
            if (round > warmUps) {
                took[name].append(double(duration));
            }
        }
    }
    QJsonObject result;
    for (const auto &[name, durations] : took) {
        result.insert(name, durations);
    }
    return result;
}

double residentBytes()
{
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("There is no /proc.");
    }
    return file.readAll().split(' ')[1].toDouble() * double(sysconf(_SC_PAGESIZE));
}

double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// The share of a core that ten changes a second take.
QJsonArray cpuShares(Way &way)
{
    constexpr auto interval = 100ms;
    constexpr auto duration = 2s;
    constexpr int runs = 3;
    LiveData lines;
    int value = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        const QJsonObject change = envelope(++value);
        lines.ingest(change);
        way.publish(change, lines.toCompactJson() + '\n');
    });
    timer.start(interval);
    QJsonArray shares;
    for (int run = 0; run < runs; ++run) {
        const double begin = cpuSeconds();
        runEventLoop(duration);
        shares.append((cpuSeconds() - begin) / std::chrono::duration<double>(duration).count());
    }
    return shares;
}

QJsonObject costs(LineReaders &readers, int count)
{
    Hosted hosted;
    const double before = residentBytes();
    hosted.open(readers, count);
    runEventLoop(settleTime);
    const double memory = (residentBytes() - before) / count;
    const QJsonArray hostedShares = cpuShares(hosted);
    BareLoop bare;
    bare.open(readers, count);
    return {{u"bytes"_s, memory}, {u"cpu"_s, hostedShares}, {u"bare_cpu"_s, cpuShares(bare)}};
}

} // namespace

int main(int argc, char **argv)
{
    LineReaders readers;
    QCoreApplication app(argc, argv);
    const auto number = [&](int index) { return index < argc ? std::atoi(argv[index]) : 0; };
    const QJsonObject result =
        argc == 2 ? costs(readers, number(1))
                  : race(readers, number(1), number(2), uint16_t(number(3)), uint16_t(number(4)));
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
