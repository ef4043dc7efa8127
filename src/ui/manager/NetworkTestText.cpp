// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/NetworkTestText.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::pair<QLatin1StringView, const char *> checkLabels[]{
    {"local_network"_L1, QT_TRANSLATE_NOOP("NetworkTestText", "Local network")},
    {"dns"_L1, QT_TRANSLATE_NOOP("NetworkTestText", "DNS")},
    {"mqtt"_L1, QT_TRANSLATE_NOOP("NetworkTestText", "Cloud (secure port)")},
    {"websocket_https"_L1, QT_TRANSLATE_NOOP("NetworkTestText", "Cloud (backup route)")},
    {"firewall"_L1, QT_TRANSLATE_NOOP("NetworkTestText", "Internet")},
    {"end_to_end"_L1, QT_TRANSLATE_NOOP("NetworkTestText", "End to end")},
};

QString checkLine(const QString &label, const QJsonObject &check)
{
    const QString mark = check.value("ok"_L1).toBool() ? u"✓"_s : u"✗"_s;
    const QString detail = check.value("detail"_L1).toString();
    return mark + u' ' + label + (detail.isEmpty() ? QString() : u" – "_s + detail);
}

} // namespace

bool isNetworkTestDone(const QJsonObject &reply)
{
    return reply.value("status"_L1).toString() == "done"_L1;
}

QString networkTestText(const QJsonObject &reply)
{
    const QJsonObject checks = reply.value("checks"_L1).toObject();
    QStringList lines;
    for (const auto &[key, label] : checkLabels) {
        if (checks.contains(key)) {
            lines.append(checkLine(QCoreApplication::translate("NetworkTestText", label),
                                   checks.value(key).toObject()));
        }
    }
    if (!isNetworkTestDone(reply)) {
        lines.append(QCoreApplication::translate("NetworkTestText", "Still running…"));
    } else if (reply.value("overall"_L1).toBool()) {
        lines.append(QCoreApplication::translate("NetworkTestText", "All checks passed."));
    } else {
        lines.append(QCoreApplication::translate("NetworkTestText", "Some checks failed."));
    }
    return lines.join(u'\n');
}

} // namespace tallyforge
