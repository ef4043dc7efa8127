// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/PlatformKey.h"

#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace tallyforge::platform {

QString platformKey()
{
    return u"linux-"_s + QSysInfo::buildCpuArchitecture();
}

QString binaryPath()
{
    return u"bin/64bit/tallyforge-obs.so"_s;
}

} // namespace tallyforge::platform
