// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/ArchiveUnpacker.h"

#include "platform/Archive.h"

namespace tallyforge {

ArchiveUnpacker::ArchiveUnpacker(QObject *parent)
    : ArchiveUnpacker(Limits(), parent)
{
}

ArchiveUnpacker::ArchiveUnpacker(Limits limits, QObject *parent)
    : QObject(parent)
    , m_limits(limits)
{
    m_timeout.setSingleShot(true);
    connect(&m_timeout, &QTimer::timeout, &m_process, &QProcess::kill);
    connect(&m_process, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        finish(status == QProcess::NormalExit && code == 0 ? Result::Unpacked : Result::Failed);
    });
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            finish(Result::NotStarted);
        }
    });
}

ArchiveUnpacker::~ArchiveUnpacker()
{
    m_process.disconnect(this);
    m_process.kill();
    m_process.waitForFinished();
}

void ArchiveUnpacker::start(const QString &archive, const QString &directory)
{
    const platform::Command command = platform::unpackCommand(archive, directory);
    if (command.program.isEmpty()) {
        QMetaObject::invokeMethod(
            this, [this] { finish(Result::NotStarted); }, Qt::QueuedConnection);
        return;
    }
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(command.program, command.arguments);
    m_timeout.start(m_limits.time);
}

void ArchiveUnpacker::finish(Result result)
{
    m_timeout.stop();
    Q_EMIT finished(result);
}

} // namespace tallyforge
