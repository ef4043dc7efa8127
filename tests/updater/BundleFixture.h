// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QTemporaryDir>

#include <sys/mount.h>

namespace tallyforge::test {

/// The files of a folder with their content, by relative path.
using Tree = QMap<QString, QByteArray>;

inline void writeTree(const QString &root, const Tree &tree)
{
    for (auto [path, content] : tree.asKeyValueRange()) {
        QFile file(QDir(root).filePath(path));
        QDir().mkpath(QFileInfo(file).path());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
        }
    }
}

inline Tree readTree(const QString &root)
{
    Tree tree;
    QDirIterator entries(root, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        QFile file(entries.next());
        static_cast<void>(file.open(QIODevice::ReadOnly));
        tree.insert(QDir(root).relativeFilePath(file.fileName()), file.readAll());
    }
    return tree;
}

/// A small file system of its own, for as long as it lives. Needs a mount namespace of one's own.
class SmallDisk
{
public:
    SmallDisk()
    {
        if (mount("none", qPrintable(path()), "tmpfs", 0, "size=1m") != 0) {
            qFatal("This test runs under 'unshare --map-root-user --mount'.");
        }
    }
    ~SmallDisk() { umount2(qPrintable(path()), MNT_DETACH); }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

/// An installation: a bundle among the plug-ins and a new version that was unpacked elsewhere.
struct BundleFixture
{
    SmallDisk disk;
    SmallDisk otherDisk;
    QString plugins = disk.path() + QStringLiteral("/plugins");
    QString target = plugins + QStringLiteral("/tallyforge-obs");
    QString staging = disk.path() + QStringLiteral("/update");
    QString binary = QStringLiteral("bin/64bit/tallyforge-obs.so");
    Tree oldTree{{binary, "old binary"},
                 {QStringLiteral("data/locale/en-US.ini"), "old text"},
                 {QStringLiteral("data/.hidden"), "old"},
                 {QStringLiteral("data/retired"), "old"}};
    Tree newTree{{binary, "new binary"},
                 {QStringLiteral("data/locale/en-US.ini"), "new text"},
                 {QStringLiteral("data/.hidden"), "new"},
                 {QStringLiteral("data/added/it"), "new"}};

    [[nodiscard]] QString source() const { return staging + QStringLiteral("/extracted/bundle"); }
    [[nodiscard]] QString backup() const { return staging + QStringLiteral("/previous"); }
    void stageElsewhere() { staging = otherDisk.path() + QStringLiteral("/update"); }

    void reset() const
    {
        QDir(plugins).removeRecursively();
        QDir(staging).removeRecursively();
        writeTree(target, oldTree);
        writeTree(source(), newTree);
    }

    /// The files that lie there after a replacement file by file and the tidying of the next start.
    [[nodiscard]] Tree replacedTree() const
    {
        Tree tree = oldTree;
        tree.insert(newTree);
        return tree;
    }
    /// Nothing but the bundle lies among the plug-ins.
    [[nodiscard]] bool isTidy() const
    {
        return QDir(plugins).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size() == 1;
    }
};

} // namespace tallyforge::test
