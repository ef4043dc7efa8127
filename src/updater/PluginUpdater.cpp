// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/PluginUpdater.h"

#include "updater/ManifestFetch.h"
#include "updater/PackageFile.h"
#include "updater/StagingFolder.h"
#include "updater/UpdateManifest.h"
#include "updater/UpdateRequest.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr qint64 sizeTolerance = 4096; // by which a package may pass its size until it's refused

// A staging folder that was made anew, and a package's file in it.
struct Prepared
{
    Outcome outcome;
    std::shared_ptr<PackageFile> file; // null if it can't be written
};

Prepared prepare(StagingFolder &staging)
{
    Prepared prepared{staging.prepare(), nullptr};
    if (prepared.outcome.ok) {
        prepared.file = staging.openPackage();
    }
    return prepared;
}

} // namespace

PluginUpdater::PluginUpdater(QObject *parent)
    : PluginUpdater(Limits(), parent)
{
}

PluginUpdater::PluginUpdater(const Limits &limits, QObject *parent)
    : QObject(parent)
    , m_limits(limits)
{
}

PluginUpdater::~PluginUpdater() = default;

void PluginUpdater::setConfig(const UpdateConfig &config)
{
    m_config = config;
    // With a slash behind it, a link would be taken for the folder that it points to, and a folder
    // for its own parent. An empty path stays empty.
    m_config.stagingDir = QDir::cleanPath(config.stagingDir);
    m_config.pluginRoot = QDir::cleanPath(config.pluginRoot);
}

void PluginUpdater::check(bool manual)
{
    if (m_busy || m_state == State::Installed) {
        return;
    }
    if (!urlAllowed(QUrl(m_config.manifestUrl))) {
        if (manual) {
            setState(State::Failed, tr("The update address is not valid."));
        }
        return;
    }
    m_busy = true;
    QNetworkRequest request = updateRequest(m_config.manifestUrl, m_config,
                                            std::chrono::milliseconds(m_config.timeoutMs));
    request.setRawHeader("Accept", "application/json");
    m_fetch = std::make_unique<ManifestFetch>(&m_network, request, m_limits.manifest);
    connect(
        m_fetch.get(), &ManifestFetch::finished, this,
        [this, manual](bool ok, const QByteArray &body) { takeManifest(ok, body, manual); },
        Qt::QueuedConnection);
    setState(State::Checking, tr("Checking for updates…"));
}

void PluginUpdater::takeManifest(bool ok, const QByteArray &body, bool manual)
{
    m_fetch.reset();
    if (!ok) {
        failCheck(tr("Could not reach the Tallyforge update service. Check your internet "
                     "connection."),
                  manual);
        return;
    }
    m_worker.run([body, config = m_config] { return parseManifest(body, config); },
                 [this, manual](const ManifestResult &result) { takeResult(result, manual); });
}

void PluginUpdater::takeResult(const ManifestResult &result, bool manual)
{
    if (!result.valid) {
        failCheck(result.message, manual);
        return;
    }
    m_info = result.info;
    if (result.available) {
        end(State::Available, tr("Version %1 is available.").arg(m_info.version));
    } else {
        end(State::UpToDate, tr("Tallyforge %1 is up to date.").arg(m_config.currentVersion));
    }
}

void PluginUpdater::failCheck(const QString &message, bool manual)
{
    if (manual) {
        end(State::Failed, message);
    } else {
        end(State::Idle, {});
    }
}

bool PluginUpdater::canInstallInPlace() const
{
    if (m_config.pluginRoot.isEmpty()) {
        return false;
    }
    const QFileInfo root(m_config.pluginRoot);
    return root.isDir() && root.isWritable() && QFileInfo(root.absolutePath()).isWritable() &&
           QFileInfo(QDir(m_config.pluginRoot).filePath(binaryPath())).isFile();
}

void PluginUpdater::install()
{
    if (m_busy || (m_state != State::Available && m_state != State::Failed) ||
        m_info.url.isEmpty()) {
        return;
    }
    if (!canInstallInPlace()) {
        const QString page =
            m_config.downloadPage.isEmpty() ? tr("the Tallyforge website") : m_config.downloadPage;
        end(State::Failed, tr("This copy of the plugin was installed for all users, so it cannot "
                              "update itself. Download and run the installer from %1.")
                               .arg(page));
        return;
    }
    m_busy = true;
    m_progress = 0; // shown with the state that follows
    m_staging = std::make_shared<StagingFolder>(m_config.stagingDir);
    m_worker.run(
        [staging = m_staging] { return prepare(*staging); },
        [this](const Prepared &prepared) {
            if (!prepared.outcome.ok) {
                end(State::Failed,
                    tr("Could not prepare a download folder (%1).").arg(prepared.outcome.error));
            } else if (!prepared.file) {
                end(State::Failed, tr("Could not write the update to disk."));
            } else {
                download(prepared.file);
            }
        });
}

void PluginUpdater::download(const std::shared_ptr<PackageFile> &file)
{
    const QNetworkRequest request =
        updateRequest(m_info.url, m_config, std::chrono::milliseconds(m_config.timeoutMs) * 2);
    PackageDownload::Expected expected{m_info.size, m_limits.package, m_info.sha256.toLatin1()};
    if (expected.size >= 1) {
        expected.limit = std::min(expected.limit, expected.size + sizeTolerance);
    }
    m_download = std::make_unique<PackageDownload>(&m_network, request, file, expected);
    connect(m_download.get(), &PackageDownload::progressed, this, &PluginUpdater::showProgress);
    connect(m_download.get(), &PackageDownload::finished, this, &PluginUpdater::takePackage,
            Qt::QueuedConnection);
    setState(State::Downloading, tr("Downloading version %1…").arg(m_info.version));
}

void PluginUpdater::showProgress(qint64 received, qint64 total)
{
    const qint64 whole = total < 1 ? m_info.size : total;
    const int percent = whole < 1 ? 0 : int(std::clamp<qint64>(received * 100 / whole, 0, 100));
    if (percent != m_progress) {
        m_progress = percent;
        setState(State::Downloading,
                 tr("Downloading version %1… %2%").arg(m_info.version, QString::number(percent)));
    }
}

void PluginUpdater::takePackage(PackageDownload::Result result)
{
    m_download.reset();
    switch (result) {
    case PackageDownload::Result::TooLarge:
        end(State::Failed, tr("The download was larger than expected, so it was discarded."));
        break;
    case PackageDownload::Result::NotWritten:
        end(State::Failed, tr("Could not write the update to disk."));
        break;
    case PackageDownload::Result::Broken:
        end(State::Failed,
            tr("The download did not finish. Check your internet connection and try again."));
        break;
    case PackageDownload::Result::WrongSize:
        end(State::Failed, tr("The download was incomplete, so it was discarded. Try again."));
        break;
    case PackageDownload::Result::WrongSum:
        end(State::Failed, tr("The download did not match its checksum, so it was discarded. "
                              "Nothing was changed."));
        break;
    case PackageDownload::Result::Complete:
        unpack();
        break;
    }
}

void PluginUpdater::unpack()
{
    const QString extracted = m_staging->extractedPath();
    QDir().mkdir(extracted); // without it the program fails
    m_unpacker = std::make_unique<ArchiveUnpacker>(m_limits.unpacking);
    connect(m_unpacker.get(), &ArchiveUnpacker::finished, this, &PluginUpdater::takeUnpacked,
            Qt::QueuedConnection);
    m_unpacker->start(m_staging->packagePath(), extracted);
    setState(State::Installing, tr("Installing version %1…").arg(m_info.version));
}

void PluginUpdater::takeUnpacked(ArchiveUnpacker::Result result)
{
    m_unpacker.reset();
    if (result == ArchiveUnpacker::Result::NotStarted) {
        end(State::Failed,
            tr("The update could not be unpacked on this computer. Nothing was changed."));
        return;
    }
    if (result == ArchiveUnpacker::Result::Failed) {
        end(State::Failed, tr("The update could not be unpacked. Nothing was changed."));
        return;
    }
    m_worker.run([staging = m_staging, root = m_config.pluginRoot,
                  binary = binaryPath()] { return staging->install(root, binary); },
                 [this](const Outcome &installed) {
                     if (installed.ok) {
                         end(State::Installed,
                             tr("Version %1 is installed. Restart OBS to start using it.")
                                 .arg(m_info.version));
                     } else {
                         end(State::Failed, installed.error);
                     }
                 });
}

QString PluginUpdater::binaryPath() const
{
    return m_config.binaryPath.isEmpty() ? u"Contents/MacOS/tallyforge-obs"_s : m_config.binaryPath;
}

void PluginUpdater::end(State state, const QString &message)
{
    m_busy = false;
    m_staging.reset();
    setState(state, message);
}

void PluginUpdater::setState(State state, const QString &message)
{
    m_state = state;
    m_message = message;
    Q_EMIT stateChanged(); // last, because the updater may be gone afterwards
}

} // namespace tallyforge
