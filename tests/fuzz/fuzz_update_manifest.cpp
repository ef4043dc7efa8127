// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The update manifest, and the order of versions: from any bytes of a server, an offered version
// may be installed, and a refused one comes with a reason. An input that begins with two lines is two versions.

#include "tests/fuzz/Harness.h"
#include "updater/UpdateManifest.h"

#include <QUrl>

using namespace tallyforge;
using namespace tallyforge::fuzz;
using namespace Qt::StringLiterals;

namespace {

void compare(const QString &a, const QString &b, const QString &c)
{
    const int order = compareVersions(a, b);
    require(order == -compareVersions(b, a));
    require(compareVersions(a, a) == 0);
    require(order > 0 || compareVersions(b, c) > 0 || compareVersions(a, c) <= 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = bytesOf(data, size);
    UpdateConfig config;
    config.currentVersion = u"1.0.1"_s;
    config.platformKey = u"linux-x86_64"_s;
    config.obsVersion = u"31.0.0"_s;
    const ManifestResult result = parseManifest(input, config);
    const UpdateInfo &info = result.info;
    require(result.valid == result.message.isEmpty());
    require(!result.available || (result.valid && compareVersions(info.version, config.currentVersion) > 0 &&
                                  urlAllowed(QUrl(info.url)) && info.sha256.size() == 64 && info.size >= 0));

    if (const QList<QByteArray> lines = input.split('\n'); lines.size() > 2) {
        const QString a = QString::fromUtf8(lines[0]);
        const QString b = QString::fromUtf8(lines[1]);
        compare(a, b, config.currentVersion);
        compare(config.currentVersion, a, b);
    }
    return 0;
}
