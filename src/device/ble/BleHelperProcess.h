// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

class QProcess;

namespace tallyforge {

/// Starts the helper program, and notices when it won't come. Main thread.
class BleHelperProcess final : public QObject
{
    Q_OBJECT

public:
    explicit BleHelperProcess(QObject *parent);
    ~BleHelperProcess() override;

    /// Starts the program, which gets the port and the token as its arguments. Ends the process of
    /// an earlier start.
    void start(const QString &helperPath, quint16 port, const QByteArray &token);
    /// The helper of the latest start has come: failed() isn't emitted for it any more.
    void arrived() { m_limit.stop(); }
    /// Ends the process of the latest start. Doesn't wait for it.
    void end();

Q_SIGNALS:
    /// The program could not be started, ended before it came, or has not come in time. It is ended
    /// by now. May be emitted before start() returns.
    void failed();

private:
    void fail();

    QProcess *m_process = nullptr; // child
    QTimer m_limit;                // runs until the helper has come
};

} // namespace tallyforge
