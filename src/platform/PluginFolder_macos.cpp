// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/PluginFolder.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace tallyforge::platform {

QString pluginRoot(const QString &dataFolder)
{
    if (dataFolder.isEmpty()) {
        return {};
    }
    // <plug-ins>/tallyforge-obs.plugin/Contents/Resources
    QDir root(QDir::cleanPath(QDir(dataFolder).absolutePath()));
    if (!root.cdUp() || !root.cdUp() || !root.dirName().endsWith(".plugin"_L1)) {
        return {};
    }
    return root.absolutePath();
}

} // namespace tallyforge::platform
