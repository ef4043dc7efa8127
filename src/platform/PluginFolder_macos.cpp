// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/PluginFolder.h"

#include <QDir>

namespace tallyforge::platform {

QString pluginRoot(const QString &dataFolder)
{
    if (dataFolder.isEmpty()) {
        return {};
    }
    // <plug-ins>/tallyforge-obs.plugin/Contents/Resources
    QDir root(QDir::cleanPath(QDir(dataFolder).absolutePath()));
    if (!root.cdUp() || !root.cdUp() || !root.dirName().endsWith(QLatin1String(".plugin"))) {
        return {};
    }
    return root.absolutePath();
}

} // namespace tallyforge::platform
