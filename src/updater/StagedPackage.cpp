// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/StagedPackage.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace tallyforge {

namespace {

constexpr QDir::Filters everything =
    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

QString text(const char *source)
{
    return QCoreApplication::translate("PluginUpdater", source);
}

QString onlyFolder(const QString &extracted)
{
    QFileInfoList entries = QDir(extracted).entryInfoList(everything);
    entries.removeIf([](const QFileInfo &entry) { return entry.fileName() == u"__MACOSX"; });
    if (entries.size() != 1 || !entries.constFirst().isDir() || entries.constFirst().isSymLink()) {
        return {};
    }
    return entries.constFirst().filePath();
}

bool leadsElsewhere(const QString &extracted, const QString &bundle)
{
    const QString top = QFileInfo(extracted).canonicalFilePath() + u'/';
    QDirIterator entries(bundle, everything, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QFileInfo entry = entries.nextFileInfo();
        if (entry.isSymLink() || !entry.canonicalFilePath().startsWith(top)) {
            return true;
        }
    }
    return false;
}

} // namespace

StagedPackage inspectExtracted(const QString &extracted, const QString &binaryPath)
{
    const QString bundle = onlyFolder(extracted);
    if (bundle.isEmpty()) {
        return {{},
                text(QT_TRANSLATE_NOOP("PluginUpdater", "The update package was not in the "
                                                        "expected shape. Nothing was changed."))};
    }
    if (leadsElsewhere(extracted, bundle)) {
        return {{},
                text(QT_TRANSLATE_NOOP("PluginUpdater",
                                       "The update package contained an unexpected link, so it was "
                                       "rejected. Nothing was changed."))};
    }
    if (!QFileInfo(QDir(bundle).filePath(binaryPath)).isFile()) {
        return {{},
                text(QT_TRANSLATE_NOOP("PluginUpdater",
                                       "The update package did not contain the plugin for this "
                                       "computer. Nothing was changed."))};
    }
    return {bundle, {}};
}

} // namespace tallyforge
