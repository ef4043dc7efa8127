// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/ArchiveUnpacker.h"

#include "updater/FileTree.h"

#include <system_error>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace tallyforge {

namespace {

constexpr auto watchInterval = 50ms;

} // namespace

ArchiveUnpacker::ArchiveUnpacker(QObject *parent)
    : ArchiveUnpacker(Limits(), parent)
{
}

ArchiveUnpacker::ArchiveUnpacker(Limits limits, QObject *parent)
    : QObject(parent)
    , m_limits(limits)
{
    m_timeout.setSingleShot(true);
    m_watch.setInterval(watchInterval);
    connect(&m_timeout, &QTimer::timeout, this, [this] { platform::killUnpacker(m_process); });
    connect(&m_watch, &QTimer::timeout, this, &ArchiveUnpacker::watchSpace);
    connect(&m_process, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        letOwnerIn(m_directory);
        const bool unpacked = status == QProcess::NormalExit && code == 0 && !isTooMuch();
        finish(unpacked ? Result::Unpacked : Result::Failed);
    });
    // Queued, so that the signal never comes out of start().
    connect(
        &m_process, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                finish(Result::NotStarted);
            }
        },
        Qt::QueuedConnection);
}

ArchiveUnpacker::~ArchiveUnpacker()
{
    m_process.disconnect(this);
    platform::killUnpacker(m_process);
    m_process.waitForFinished();
}

void ArchiveUnpacker::start(const QString &archive, const QString &directory)
{
    run(platform::unpackCommand(archive, directory), directory);
}

void ArchiveUnpacker::run(const platform::Command &command, const QString &directory)
{
    m_directory = directory;
    platform::confineUnpacker(&m_process, m_limits.bytes,
                              std::chrono::ceil<std::chrono::seconds>(m_limits.time));
    m_timeout.start(m_limits.time);
    m_watch.start();
    m_process.start(command.program, command.arguments);
}

// A small package can hold a disk full of zeros, or files without end. An entry whose path is too
// long to be looked at may hold just that. An entry that is gone again doesn't count, nor does a
// folder that is locked until the end.
bool ArchiveUnpacker::isTooMuch() const
{
    const auto hides = [](const std::error_code &error) {
        return error && error != std::errc::no_such_file_or_directory &&
               error != std::errc::permission_denied;
    };
    qint64 bytes = 0;
    int entries = 0;
    bool tooMuch = false;
    const std::error_code broken = walkTree(
        m_directory,
        [&](const fs::directory_entry &entry) {
            std::error_code error;
            if (!entry.is_symlink(error) && entry.is_regular_file(error)) {
                const auto size = entry.file_size(error);
                bytes += error ? 0 : static_cast<qint64>(size);
            }
            tooMuch = hides(error) || ++entries > m_limits.entries || bytes > m_limits.bytes;
            return !tooMuch;
        },
        fs::directory_options::skip_permission_denied);
    return tooMuch || hides(broken);
}

void ArchiveUnpacker::watchSpace()
{
    if (isTooMuch()) {
        platform::killUnpacker(m_process);
    }
}

void ArchiveUnpacker::finish(Result result)
{
    m_timeout.stop();
    m_watch.stop();
    Q_EMIT finished(result);
}

} // namespace tallyforge
