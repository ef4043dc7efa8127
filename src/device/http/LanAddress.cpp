// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/http/LanAddress.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int maxPort = 65535;
constexpr qsizetype numberWidth = 4;

bool isDeviceNumber(const QString &text)
{
    return !text.isEmpty() && text.size() <= numberWidth &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

LanAddress LanAddress::fromText(const QString &text)
{
    const qsizetype colon = text.lastIndexOf(u':');
    if (colon >= 1 && text.count(u':') == 1) {
        const int port = text.mid(colon + 1).toInt();
        if (port >= 1 && port <= maxPort) {
            return {text.left(colon), port};
        }
    }
    return {text, 0};
}

QString normalizeLanHost(const QString &text)
{
    QString host = text.trimmed();
    if (const qsizetype scheme = host.indexOf("://"_L1); scheme >= 0) {
        host = host.mid(scheme + 3);
    }
    host = host.section(u'/', 0, 0).trimmed();
    if (host.contains(u' ')) {
        return {};
    }
    if (isDeviceNumber(host)) {
        return u"tallyforge%1.local"_s.arg(host.rightJustified(numberWidth, u'0'));
    }
    if (host.startsWith("tallyforge"_L1, Qt::CaseInsensitive) && !host.contains(u'.')) {
        return host.toLower() + u".local"_s;
    }
    return host;
}

} // namespace tallyforge
