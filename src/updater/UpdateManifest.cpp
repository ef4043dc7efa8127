// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/UpdateManifest.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

// A version's parts one after the other, so that a long text of a stranger makes no long list.
class Version
{
public:
    explicit Version(QStringView version)
        : m_rest(version.trimmed())
    {
        if (m_rest.startsWith(u'v', Qt::CaseInsensitive)) {
            m_rest = m_rest.sliced(1);
        }
        const qsizetype dash = m_rest.indexOf(u'-');
        m_preRelease = dash >= 0;
        m_rest = m_rest.first(m_preRelease ? dash : m_rest.size());
    }
    bool isPreRelease() const { return m_preRelease; }
    bool atEnd() const { return m_rest.isEmpty(); }
    int takePart()
    {
        const qsizetype dot = m_rest.indexOf(u'.');
        const QStringView part = dot < 0 ? m_rest : m_rest.first(dot);
        m_rest = dot < 0 ? QStringView() : m_rest.sliced(dot + 1);
        return part.toInt(); // 0 if it is no number
    }

private:
    QStringView m_rest;
    bool m_preRelease = false;
};

bool matches(const QString &value, const QString &pattern)
{
    const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
    return whole.match(value).hasMatch();
}

QString lines(const QJsonValue &value)
{
    QStringList result;
    const QJsonArray array = value.toArray();
    result.reserve(array.size());
    for (const QJsonValueConstRef line : array) {
        result.append(line.toString());
    }
    return value.isArray() ? result.join(u'\n') : value.toString();
}

// Only of a newer version: how it can be installed here, or why not.
void readPackage(const QJsonObject &package, const UpdateConfig &config, ManifestResult *result)
{
    UpdateInfo &info = result->info;
    if (package.isEmpty()) {
        result->message =
            QCoreApplication::translate(
                "PluginUpdater", "Version %1 is out, but not available for this computer yet.")
                .arg(info.version);
        return;
    }
    info.url = package.value("url"_L1).toString();
    info.sha256 = package.value("sha256"_L1).toString().toLower();
    // Above the last whole number that a double holds, none of its digits is meant.
    info.size = qint64(std::clamp(package.value("size"_L1).toDouble(), 0.0, 0x1p53));
    if (!urlAllowed(QUrl(info.url)) || !matches(info.sha256, u"[0-9a-f]{64}"_s)) {
        result->message =
            QCoreApplication::translate("PluginUpdater", "The update information is incomplete.");
        return;
    }
    if (!info.minObs.isEmpty() && !config.obsVersion.isEmpty() &&
        compareVersions(config.obsVersion, info.minObs) < 0) {
        result->message = QCoreApplication::translate(
                              "PluginUpdater", "Version %1 needs OBS %2 or newer (this is OBS %3).")
                              .arg(info.version, info.minObs, config.obsVersion);
        return;
    }
    result->valid = true;
    result->available = true;
}

} // namespace

int compareVersions(QStringView a, QStringView b)
{
    Version left(a);
    Version right(b);
    while (!left.atEnd() || !right.atEnd()) {
        const int one = left.takePart();
        const int other = right.takePart();
        if (one != other) {
            return one < other ? -1 : 1;
        }
    }
    return int(right.isPreRelease()) - int(left.isPreRelease());
}

bool urlAllowed(const QUrl &url)
{
    const QString host = url.host();
    if (url.scheme() == "https"_L1) {
        return !host.isEmpty();
    }
    return url.scheme() == "http"_L1 && (host == "127.0.0.1"_L1 || host == "localhost"_L1);
}

ManifestResult parseManifest(const QByteArray &bytes, const UpdateConfig &config)
{
    ManifestResult result;
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        result.message = QCoreApplication::translate("PluginUpdater",
                                                     "The update information was not readable.");
        return result;
    }
    const QJsonObject manifest = document.object();
    if (manifest.value("schema"_L1) != 1 && manifest.contains("schema"_L1)) {
        result.message = QCoreApplication::translate(
            "PluginUpdater", "This update needs a newer Tallyforge plugin than the one installed. "
                             "Download the installer from the Tallyforge website.");
        return result;
    }
    const QString version = manifest.value("version"_L1).toString();
    if (!matches(version, uR"(\d+\.\d+\.\d+(-[0-9A-Za-z.]+)?)"_s)) {
        result.message = QCoreApplication::translate(
            "PluginUpdater", "The update information has no valid version.");
        return result;
    }
    result.info.version = version;
    result.info.released = manifest.value("released"_L1).toString();
    result.info.minObs = manifest.value("min_obs"_L1).toString();
    result.info.notes = lines(manifest.value("notes"_L1));
    if (compareVersions(version, config.currentVersion) < 1) {
        result.valid = true;
        return result;
    }
    readPackage(manifest.value("packages"_L1)[config.platformKey].toObject(), config, &result);
    return result;
}

} // namespace tallyforge
