// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <cstdint>
#include <sys/types.h>

namespace tallyforge::bench {

/// Nanoseconds of the clock that all processes share.
[[nodiscard]] long long nowNs();

/// A TCP connection to a port on loopback, without the wait for fuller packets. Ends the program
/// when there is none to be had.
[[nodiscard]] int connectTo(uint16_t port);

/// The greeting of a subscriber or a publisher of MQTT on a connected socket.
void greetMqtt(int socket, int number);

/// A process of its own with many readers, to be made before anything else of the program.
class LineReaders
{
public:
    LineReaders();
    ~LineReaders();
    LineReaders(const LineReaders &) = delete;
    LineReaders &operator=(const LineReaders &) = delete;

    /// Connects count readers to a port, as subscribers of the topic "s" if it speaks MQTT. Returns
    /// once the last connection stands.
    void connect(uint16_t port, uint32_t count, bool mqtt);

    /// From now on, count ends of lines are waited for.
    void expect(uint32_t count);
    /// When the last of them came.
    [[nodiscard]] long long awaitLast();
    /// Becomes readable when awaitLast() wouldn't wait.
    [[nodiscard]] int reports() const { return m_reports; }

private:
    struct Order;
    void give(const Order &order);

    int m_orders = -1;
    int m_reports = -1;
    pid_t m_process = -1;
};

} // namespace tallyforge::bench
