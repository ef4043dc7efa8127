// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QObject>
#include <QProcess>
#include <QTimer>

#include <chrono>

namespace tallyforge {

/// Unpacks one package with the system's archive program, which runs as a child process with
/// bounded time and space. Destroying it ends the program.
class ArchiveUnpacker : public QObject
{
    Q_OBJECT

public:
    struct Limits
    {
        std::chrono::milliseconds time = std::chrono::seconds(120);
        qint64 bytes = qint64(1024) * 1024 * 1024; ///< all files of the package together
        int entries = 4096;                        ///< files and folders together
    };

    enum class Result {
        Unpacked,
        Failed,     ///< the program ended with an error, was too slow, or wrote too much
        NotStarted, ///< this computer has no such program
    };
    Q_ENUM(Result)

    explicit ArchiveUnpacker(QObject *parent = nullptr);
    explicit ArchiveUnpacker(Limits limits, QObject *parent = nullptr);
    ~ArchiveUnpacker() override;

    /// Unpacks into a folder that exists and is empty; both paths are absolute. Called once at a
    /// time; finished() follows later, also when the program doesn't start.
    void start(const QString &archive, const QString &directory);

Q_SIGNALS:
    void finished(ArchiveUnpacker::Result result);

private:
    void finish(Result result);

    const Limits m_limits;
    QProcess m_process;
    QTimer m_timeout;
};

} // namespace tallyforge
