// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Archive.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tallyforge::platform {

Command unpackCommand(const QString &archive, const QString &directory)
{
    return unpackCommands(archive, directory).value(0);
}

void confineUnpacker(QProcess *process, qint64 largestFile, std::chrono::seconds computingTime)
{
    // Each of these programs takes options and libraries from the environment too.
    QProcessEnvironment environment;
    environment.insert(u"PATH"_s, u"/usr/bin:/bin"_s);
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    process->setProcessEnvironment(environment);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());

    // Without a terminal it can't ask for a password. Copying OBS's page tables for a fork would
    // hold its main thread.
    using Flag = QProcess::UnixProcessFlag;
    process->setUnixProcessParameters(Flag::CreateNewSession | Flag::CloseFileDescriptors |
                                      Flag::ResetSignalHandlers | Flag::UseVFork);
    const auto seconds = static_cast<rlim_t>(computingTime.count());
    const rlimit size{static_cast<rlim_t>(largestFile), static_cast<rlim_t>(largestFile)};
    const rlimit time{seconds, seconds};
    process->setChildProcessModifier([size, time] {
        constexpr int politeness = 10;
        setrlimit(RLIMIT_FSIZE, &size);
        setrlimit(RLIMIT_CPU, &time);
        setpriority(PRIO_PROCESS, 0, politeness);
    });
}

void killUnpacker(const QProcess &process)
{
    // QProcess hasn't waited for it yet, so the number is still its own. It may not have come to
    // its session.
    const auto number = static_cast<pid_t>(process.processId());
    if (process.state() != QProcess::NotRunning && number > 0 && kill(-number, SIGKILL) != 0) {
        kill(number, SIGKILL);
    }
}

} // namespace tallyforge::platform
