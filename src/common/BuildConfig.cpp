// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "common/BuildConfig.h"

namespace tallyforge::build_config {

QString version()
{
    return QStringLiteral(TALLYFORGE_VERSION);
}

QString portalUrl()
{
    return QStringLiteral(TALLYFORGE_PORTAL_URL);
}

QString updateManifestUrl()
{
    return QStringLiteral(TALLYFORGE_UPDATE_MANIFEST_URL);
}

QString downloadPageUrl()
{
    return QStringLiteral(TALLYFORGE_DOWNLOAD_PAGE_URL);
}

} // namespace tallyforge::build_config
