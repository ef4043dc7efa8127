// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/StagingFolder.h"

#include "platform/Disk.h"
#include "updater/BundleInstaller.h"
#include "updater/PackageFile.h"
#include "updater/StagedPackage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <tuple>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

QString parentOf(const QString &path)
{
    return QFileInfo(QFileInfo(path).path()).canonicalFilePath();
}

} // namespace

StagingFolder::StagingFolder(const QString &path)
    : m_path(path)
{
}

StagingFolder::~StagingFolder() = default;

Outcome StagingFolder::prepare()
{
    const QString parent = QFileInfo(m_path).path();
    QDir().mkpath(parent);
    m_lock = std::make_unique<platform::FolderLock>(parent);
    if (m_lock->isTaken()) {
        return Outcome::failure(
            QCoreApplication::translate("PluginUpdater", "%1 is in use").arg(m_path));
    }
    if (const Outcome removed = removeTree(m_path); !removed.ok) {
        return removed;
    }
    // Nobody else may change a package after it has been judged.
    constexpr auto owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    return QDir().mkdir(m_path, owner) ? Outcome() : Outcome::failure(m_path);
}

std::shared_ptr<PackageFile> StagingFolder::openPackage() const
{
    auto file = std::make_shared<PackageFile>(packagePath());
    return file->open() ? file : nullptr;
}

QString StagingFolder::packagePath() const
{
    return QDir(m_path).filePath(u"package.zip"_s);
}

QString StagingFolder::extractedPath() const
{
    return QDir(m_path).filePath(u"extracted"_s);
}

Outcome StagingFolder::install(const QString &pluginRoot, const QString &binaryPath)
{
    Outcome judged = inspectExtracted(extractedPath(), binaryPath);
    if (!judged.ok) {
        return judged;
    }
    const bool isBeside = parentOf(m_path) == parentOf(pluginRoot);
    if (isBeside) {
        m_lock.reset(); // the installation takes the same lock
    }
    const Outcome installed = installTree(bundleIn(extractedPath()), pluginRoot,
                                          QDir(m_path).filePath(u"previous"_s), true);
    if (!installed.ok) {
        return Outcome::failure(
            QCoreApplication::translate("PluginUpdater", "The update could not be installed (%1). "
                                                         "The current version was left in place.")
                .arg(installed.error));
    }
    if (isBeside) {
        m_lock = std::make_unique<platform::FolderLock>(QFileInfo(m_path).path());
    }
    // A rest that stays is removed before the next download.
    if (!m_lock->isTaken()) {
        QFile::remove(packagePath());
        std::ignore = removeTree(extractedPath());
    }
    return {};
}

} // namespace tallyforge
