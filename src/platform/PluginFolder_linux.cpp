// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/PluginFolder.h"

#include "platform/PlatformKey.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace tallyforge::platform {

QString pluginRoot(const QString &dataFolder)
{
    if (dataFolder.isEmpty()) {
        return {};
    }
    // <plug-ins>/tallyforge-obs/data beside the folder of the binary. A system-wide data folder,
    // …/obs/obs-plugins/tallyforge-obs, has no such name and no such neighbour.
    QDir root(QDir::cleanPath(QDir(dataFolder).absolutePath()));
    if (root.dirName() != "data"_L1 || !root.cdUp() || !root.exists(binaryPath())) {
        return {};
    }
    return root.absolutePath();
}

} // namespace tallyforge::platform
