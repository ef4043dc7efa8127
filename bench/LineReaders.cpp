// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "bench/LineReaders.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tallyforge::bench {

namespace {

[[noreturn]] void fail(const char *what)
{
    std::perror(what);
    std::_Exit(1);
}

long long check(long long result, const char *what)
{
    if (result < 0) {
        fail(what);
    }
    return result;
}

void writeAll(int fd, const std::string &bytes)
{
    if (write(fd, bytes.data(), bytes.size()) != ssize_t(bytes.size())) {
        fail("write");
    }
}

void readExactly(int fd, void *data, size_t size)
{
    for (auto *at = static_cast<char *>(data); size > 0;) {
        const ssize_t count = read(fd, at, size);
        if (count <= 0) {
            fail("read");
        }
        at += count;
        size -= size_t(count);
    }
}

void subscribeMqtt(int fd)
{
    writeAll(fd, std::string("\x82\x06\x00\x01\x00\x01s\x00", 8));
    std::array<char, 5> granted;
    readExactly(fd, granted.data(), granted.size());
}

} // namespace

struct LineReaders::Order
{
    uint32_t connections; // to be made, or none
    uint32_t lineEnds;    // to be counted
    uint16_t port;
    bool mqtt;
};

long long nowNs()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

int connectTo(uint16_t port)
{
    const int fd = int(check(socket(AF_INET, SOCK_STREAM, 0), "socket"));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    check(connect(fd, reinterpret_cast<sockaddr *>(&address), sizeof address), "connect");
    const int on = 1;
    check(setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on), "TCP_NODELAY");
    return fd;
}

void greetMqtt(int socket, int number)
{
    std::string id = std::to_string(number);
    id.insert(0, 6 - id.size(), '0');
    writeAll(socket, std::string("\x10\x12\x00\x04MQTT\x04\x02\x00\x00\x00\x06", 14) + id);
    std::array<char, 4> accepted;
    readExactly(socket, accepted.data(), accepted.size());
}

namespace {

// The readers' own process: counts the ends of lines on all sockets, and tells when the last that
// was wanted has come.
class Process
{
public:
    Process(int orders, int reports)
        : m_orders(orders)
        , m_reports(reports)
        , m_epoll(int(check(epoll_create1(0), "epoll_create1")))
    {
        watch(m_orders);
    }

    template <typename Order> [[noreturn]] void run()
    {
        for (;;) {
            std::array<epoll_event, 64> events;
            const int count = epoll_wait(m_epoll, events.data(), int(events.size()), -1);
            for (int i = 0; i < count; ++i) {
                if (events[size_t(i)].data.fd == m_orders) {
                    Order order;
                    if (read(m_orders, &order, sizeof order) != sizeof order) {
                        std::_Exit(0);
                    }
                    obey(order);
                } else {
                    countLines(events[size_t(i)].data.fd);
                }
            }
        }
    }

private:
    template <typename Order> void obey(const Order &order)
    {
        for (uint32_t i = 0; i < order.connections; ++i) {
            const int fd = connectTo(order.port);
            if (order.mqtt) {
                greetMqtt(fd, ++m_number);
                subscribeMqtt(fd);
            }
            watch(fd);
        }
        m_wanted = order.lineEnds;
        report();
    }
    void watch(int fd) const
    {
        epoll_event event{};
        event.events = EPOLLIN;
        event.data.fd = fd;
        check(epoll_ctl(m_epoll, EPOLL_CTL_ADD, fd, &event), "epoll_ctl");
    }
    void countLines(int fd)
    {
        std::array<char, 16384> bytes;
        const ssize_t size = check(recv(fd, bytes.data(), bytes.size(), MSG_DONTWAIT), "recv");
        if (size == 0) { // the end of the race, unless lines are wanted: then nobody reports them
            std::_Exit(1);
        }
        const auto ends = uint32_t(std::count(bytes.begin(), bytes.begin() + size, '\n'));
        if (m_wanted > 0 && (m_wanted -= std::min(m_wanted, ends)) == 0) {
            report();
        }
    }
    void report() const
    {
        const long long now = nowNs();
        check(write(m_reports, &now, sizeof now), "report");
    }

    const int m_orders;
    const int m_reports;
    const int m_epoll;
    int m_number = 0;
    uint32_t m_wanted = 0;
};

} // namespace

LineReaders::LineReaders()
{
    std::array<int, 2> orders;
    std::array<int, 2> reports;
    check(pipe(orders.data()), "pipe");
    check(pipe(reports.data()), "pipe");
    m_process = pid_t(check(fork(), "fork"));
    if (m_process == 0) {
        close(orders[1]);
        Process(orders[0], reports[1]).run<Order>();
    }
    close(orders[0]);
    close(reports[1]);
    m_orders = orders[1];
    m_reports = reports[0];
}

LineReaders::~LineReaders()
{
    close(m_orders);
    close(m_reports);
    waitpid(m_process, nullptr, 0);
}

void LineReaders::give(const Order &order)
{
    check(write(m_orders, &order, sizeof order), "order");
    static_cast<void>(awaitLast());
}

void LineReaders::connect(uint16_t port, uint32_t count, bool mqtt)
{
    give({count, 0, port, mqtt});
}

void LineReaders::expect(uint32_t count)
{
    give({0, count, 0, false});
}

long long LineReaders::awaitLast()
{
    long long time = 0;
    readExactly(m_reports, &time, sizeof time);
    return time;
}

} // namespace tallyforge::bench
