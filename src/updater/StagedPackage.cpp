// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/StagedPackage.h"

#include "updater/FileReplacement.h"
#include "updater/FileTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <optional>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace tallyforge {

namespace {

enum class Content {
    Ordinary,
    Link, ///< something there leads, or may lead, elsewhere
    Odd,  ///< a device, a pipe, a name that the installation needs, or something unreadable
};

// OBS runs as the owner and must be able to load everything; nobody else shall be able to change
// it, or to gain rights by running it.
void setModes(const fs::path &path, fs::file_status status, std::error_code &error)
{
    const auto least = fs::is_directory(status) ? fs::perms::owner_all
                                                : fs::perms::owner_read | fs::perms::owner_write;
    constexpr auto most = fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                          fs::perms::others_read | fs::perms::others_exec;
    fs::permissions(path, (status.permissions() & most) | least, error);
}

Content judge(const fs::directory_entry &entry, const std::string &top)
{
    std::error_code error;
    const fs::file_status status = entry.symlink_status(error);
    const bool isFile = fs::is_regular_file(status);
    if (fs::is_symlink(status) || (isFile && fs::hard_link_count(entry.path(), error) > 1)) {
        return Content::Link;
    }
    if ((!isFile && !fs::is_directory(status)) ||
        isReservedName(QString::fromStdString(entry.path().filename().string()))) {
        return Content::Odd;
    }
    if (!fs::canonical(entry.path(), error).string().starts_with(top)) {
        return Content::Link;
    }
    setModes(entry.path(), status, error);
    return error ? Content::Odd : Content::Ordinary;
}

// A link is the answer, whatever else is found.
Content walk(const QString &extracted, const QString &bundle)
{
    std::error_code error;
    const std::string top = fs::canonical(nativePath(extracted), error).string() + '/';
    if (!error) {
        setModes(nativePath(bundle), fs::status(nativePath(bundle), error), error);
    }
    if (error) {
        return Content::Odd;
    }
    Content worst = Content::Ordinary;
    error = walkTree(bundle, [&](const fs::directory_entry &entry) {
        const Content content = judge(entry, top);
        if (content != Content::Ordinary) {
            worst = content;
        }
        return worst != Content::Link;
    });
    return error ? Content::Odd : worst;
}

} // namespace

QString bundleIn(const QString &extracted)
{
    QFileInfoList entries = QDir(extracted).entryInfoList(QDir::AllEntries | QDir::Hidden |
                                                          QDir::System | QDir::NoDotAndDotDot);
    entries.removeIf([](const QFileInfo &entry) { return entry.fileName() == u"__MACOSX"; });
    if (entries.size() != 1 || !entries.constFirst().isDir() || entries.constFirst().isSymLink()) {
        return {};
    }
    return entries.constFirst().filePath();
}

Outcome inspectExtracted(const QString &extracted, const QString &binaryPath)
{
    const QString bundle = bundleIn(extracted);
    const Content content = bundle.isEmpty() ? Content::Odd : walk(extracted, bundle);
    if (content == Content::Odd) {
        return Outcome::failure(QCoreApplication::translate(
            "PluginUpdater",
            "The update package was not in the expected shape. Nothing was changed."));
    }
    if (content == Content::Link) {
        return Outcome::failure(QCoreApplication::translate(
            "PluginUpdater", "The update package contained an unexpected link, so it was rejected. "
                             "Nothing was changed."));
    }
    if (!QFileInfo(QDir(bundle).filePath(binaryPath)).isFile()) {
        return Outcome::failure(QCoreApplication::translate(
            "PluginUpdater", "The update package did not contain the plugin for this computer. "
                             "Nothing was changed."));
    }
    return {};
}

} // namespace tallyforge
