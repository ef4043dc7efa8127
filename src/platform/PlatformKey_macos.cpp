// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/PlatformKey.h"

#include <QSysInfo>

namespace tallyforge::platform {

QString platformKey()
{
    return QStringLiteral("macos-") + QSysInfo::buildCpuArchitecture();
}

QString binaryPath()
{
    return QStringLiteral("Contents/MacOS/tallyforge-obs");
}

} // namespace tallyforge::platform
