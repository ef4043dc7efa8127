// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "platform/Archive.h"

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
    /// What a package may take at most. A package of 200 MiB, the largest that is downloaded, has
    /// room to grow to five times its size; so few entries are counted in no time.
    struct Limits
    {
        std::chrono::milliseconds time = std::chrono::seconds(120);
        qint64 bytes = qint64(1024) * 1024 * 1024; ///< all files together
        int entries = 1000;                        ///< files and folders together
    };

    enum class Result {
        Unpacked,
        Failed,     ///< the program ended with an error, or had to be ended for its time or space
        NotStarted, ///< this computer has no such program
    };
    Q_ENUM(Result)

    explicit ArchiveUnpacker(QObject *parent = nullptr);
    explicit ArchiveUnpacker(Limits limits, QObject *parent = nullptr);
    ~ArchiveUnpacker() override;

    /// Unpacks into a folder that exists and is empty; both paths are absolute. finished() follows
    /// later, also when no program starts. Not while one is under way.
    void start(const QString &archive, const QString &directory);

    /// The same with a given command, which fills the directory.
    void run(const platform::Command &command, const QString &directory);

Q_SIGNALS:
    void finished(tallyforge::ArchiveUnpacker::Result result);

private:
    [[nodiscard]] bool isTooMuch() const;
    void watchSpace();
    void finish(Result result);

    const Limits m_limits;
    QString m_directory;
    QProcess m_process;
    QTimer m_timeout;
    QTimer m_watch;
};

} // namespace tallyforge
