// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QSemaphore>
#include <QString>
#include <QThread>

#include <chrono>
#include <functional>
#include <memory>

namespace tallyforge::test {
class BleHelperDouble;
}

namespace tallyforge::bench {

/// What an exchange costs on a carrier without the plug-in's code on top of it.
class Bare : public QObject
{
public:
    using Done = std::function<void(bool ok)>;

    /// Takes a request that each exchange is to carry.
    virtual void prepare(const QByteArray &request) = 0;
    /// Sends the request and waits for the whole answer. One at a time.
    virtual void exchange(const Done &done) = 0;
};

// Each is ready for exchanges once it has called back.

/// Another device on another cable, read at the pace at which SerialPort reads.
[[nodiscard]] std::unique_ptr<Bare> bareUsb(const QString &path, const QString &password,
                                            const Bare::Done &ready);
/// A device's live data by HTTP, signed in.
[[nodiscard]] std::unique_ptr<Bare> bareHttp(const QString &address, const QString &password,
                                             const Bare::Done &ready);
/// The Bluetooth helper's double on a thread of its own, as the helper is a program of its own.
/// A bridge that starts it by its path and one that it visits meet the same device, which answers
/// with a state, or in short when it's asked with parameters, and confirms a write after a delay.
class HelperThread : public QThread
{
public:
    HelperThread(int writePayload, std::chrono::milliseconds delay, const QJsonObject &state);
    ~HelperThread() override;

    [[nodiscard]] QString path() const;
    [[nodiscard]] int writePayload() const { return m_writePayload; }
    [[nodiscard]] QByteArray answerTo(const QJsonObject &request) const;
    void visit(quint16 port);

protected:
    void run() override;

private:
    const int m_writePayload;
    const std::chrono::milliseconds m_delay;
    const QJsonObject m_state;
    QSemaphore m_running;
    // Both live on the thread, so that both see the same of the machine.
    QObject *m_inside = nullptr;
    test::BleHelperDouble *m_started = nullptr;
    test::BleHelperDouble *m_visitor = nullptr;
};

/// Lines of the helper's protocol that were made before.
[[nodiscard]] std::unique_ptr<Bare> bareBle(HelperThread *helper, const Bare::Done &ready);

} // namespace tallyforge::bench
