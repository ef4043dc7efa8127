// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/UpdateTypes.h"

#include <QString>

#include <memory>

namespace tallyforge {

namespace platform {
class FolderLock;
}

class PackageFile;

/// The updater's own folder, in which a package is received, unpacked and judged, and which keeps
/// the old version after an installation. From prepare() on it keeps another OBS out, until it is
/// destroyed; during an installation the bundle's folder does so. Blocks on the disk; used by one
/// thread at a time.
class StagingFolder final
{
public:
    /// A path without a slash at its end.
    explicit StagingFolder(const QString &path);
    ~StagingFolder();
    Q_DISABLE_COPY_MOVE(StagingFolder)

    /// Removes the folder with all that lies in it, and makes it anew, for its owner alone.
    [[nodiscard]] Outcome prepare();
    /// The package's file, open for writing; null if it can't be written.
    [[nodiscard]] std::shared_ptr<PackageFile> openPackage() const;

    [[nodiscard]] QString packagePath() const;
    /// For the content of the package.
    [[nodiscard]] QString extractedPath() const;

    /// Judges the unpacked package and puts its bundle in place of the one at pluginRoot. The
    /// error is a sentence for the user.
    [[nodiscard]] Outcome install(const QString &pluginRoot, const QString &binaryPath);

private:
    const QString m_path;
    std::unique_ptr<platform::FolderLock> m_lock;
};

} // namespace tallyforge
