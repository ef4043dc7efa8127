// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge {

/// The updater's knowledge of this installation.
struct UpdateConfig
{
    QString manifestUrl;    ///< HTTPS
    QString currentVersion; ///< the version that runs, for example "1.0.1"
    QString platformKey;    ///< which of a manifest's packages fits this computer
    QString obsVersion;     ///< may be empty, then every version of the plug-in fits it
    QString pluginRoot;     ///< the plug-in's bundle; empty if it has none of its own
    QString stagingDir;     ///< a folder of the updater's own, whose content it removes
    QString downloadPage;   ///< may be empty
    QString binaryPath;     ///< inside a bundle; empty means "Contents/MacOS/tallyforge-obs"
    int timeoutMs = 15000;  ///< of silence in a check; a download gets twice as much
};

/// How a step of an update has ended.
struct Outcome
{
    bool ok = true;
    QString error; ///< why not: a sentence for the user, or the part of one in parentheses

    [[nodiscard]] static Outcome failure(const QString &error) { return {false, error}; }
};

/// A version that the manifest offers.
struct UpdateInfo
{
    QString version;
    QString released;
    QString notes; ///< lines
    QString minObs;
    QString url;     ///< of the package; empty if the version is none to install
    QString sha256;  ///< lower-case hexadecimal
    qint64 size = 0; ///< bytes; 0 if unknown
};

struct ManifestResult
{
    bool valid = false;     ///< the manifest was understood for this computer
    bool available = false; ///< a newer version can be installed
    UpdateInfo info;
    QString message; ///< why it isn't valid, for the user
};

} // namespace tallyforge
