// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/PlatformKey.h"

#include <QSysInfo>

namespace tallyforge::platform {

QString platformKey()
{
    return QStringLiteral("linux-") + QSysInfo::buildCpuArchitecture();
}

QString binaryPath()
{
    return QStringLiteral("bin/64bit/tallyforge-obs.so");
}

} // namespace tallyforge::platform
