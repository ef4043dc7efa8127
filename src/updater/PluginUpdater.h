// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/ArchiveUnpacker.h"
#include "updater/PackageDownload.h"
#include "updater/UpdateTypes.h"
#include "updater/Worker.h"

#include <QNetworkAccessManager>
#include <QObject>

#include <chrono>
#include <memory>

namespace tallyforge {

class ManifestFetch;
class PackageFile;
class StagingFolder;

/// Keeps the plug-in itself up to date: looks for a newer version, downloads it into the staging
/// folder, and puts it in place of the present one, which goes on running until OBS ends. Whatever
/// fails leaves the installed version working, and ends in a state and a message for the user.
/// Long work on the disk happens on a thread of its own. Destroying the updater ends its
/// work, except for an installation that has begun: that one is finished first.
/// Main thread only; nothing is logged here.
class PluginUpdater final : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle,
        Checking,
        UpToDate,
        Available,
        Downloading,
        Installing,
        Installed, ///< final: the new version starts with the next OBS
        Failed,    ///< the message says why
    };
    Q_ENUM(State)

    struct Limits
    {
        /// For a whole check. A connection that stands still ends after the configured time.
        std::chrono::milliseconds manifest{60000};
        qint64 package = qint64(200) * 1024 * 1024; ///< bytes
        ArchiveUnpacker::Limits unpacking;
    };

    explicit PluginUpdater(QObject *parent = nullptr);
    explicit PluginUpdater(const Limits &limits, QObject *parent = nullptr);
    ~PluginUpdater() override;

    /// Before the first check.
    void setConfig(const UpdateConfig &config);

    /// Looks for a newer version. Does nothing while busy, and after an installation. With manual
    /// false a failure leaves the user in peace: it ends in Idle.
    Q_INVOKABLE void check(bool manual);

    /// Whether the plug-in's own folder and the one around it may be changed.
    [[nodiscard]] bool canInstallInPlace() const;
    /// Downloads and installs the version that a check has found, in Available, or once more in
    /// Failed.
    Q_INVOKABLE void install();

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] QString message() const { return m_message; }
    /// The last version that a check has told of; stays through failures.
    [[nodiscard]] const UpdateInfo &info() const { return m_info; }
    /// Of the download, in percent.
    [[nodiscard]] int progress() const { return m_progress; }
    /// From the beginning of a check, or of an installation, to its end.
    [[nodiscard]] bool isBusy() const { return m_busy; }

Q_SIGNALS:
    /// After every change of state, message or progress. The updater may be deleted in it.
    void stateChanged();

private:
    void takeManifest(bool ok, const QByteArray &body, bool manual);
    void takeResult(const ManifestResult &result, bool manual);
    void failCheck(const QString &message, bool manual);

    void download(const std::shared_ptr<PackageFile> &file);
    void showProgress(qint64 received, qint64 total);
    void takePackage(PackageDownload::Result result);
    void unpack();
    void takeUnpacked(ArchiveUnpacker::Result result);

    [[nodiscard]] QString binaryPath() const;
    void end(State state, const QString &message);
    void setState(State state, const QString &message);

    const Limits m_limits;
    UpdateConfig m_config;
    State m_state = State::Idle;
    QString m_message;
    UpdateInfo m_info;
    int m_progress = 0;
    bool m_busy = false;
    QNetworkAccessManager m_network;
    std::shared_ptr<StagingFolder> m_staging; // during an installation
    std::unique_ptr<ManifestFetch> m_fetch;
    std::unique_ptr<PackageDownload> m_download;
    std::unique_ptr<ArchiveUnpacker> m_unpacker;
    Worker m_worker{this};
};

} // namespace tallyforge
