// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ControllerCatalog.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr auto channelPrefix = "channel_"_L1;
constexpr int channels = 10;

QMap<QString, ControllerFamily> makeCatalog()
{
    const QStringList cables{u"rs232"_s, u"rs485"_s, u"wireless"_s};
    QStringList bridges;
    for (int channel = 1; channel <= channels; ++channel) {
        bridges.append(channelPrefix + QString::number(channel));
    }
    bridges.append(u"ethernet_bridge"_s);
    return {
        {u"allamerican"_s,
         {u"All-American"_s, {u"3000"_s, u"8000"_s, u"9000"_s}, {u"rs232"_s, u"wireless"_s}, {}}},
        {u"daktronics"_s, {u"Daktronics"_s, {u"5000"_s}, {u"cl"_s, u"rs232"_s, u"wireless"_s}, {}}},
        {u"electromech"_s, {u"Electromech"_s, {u"LX"_s}, {u"cl"_s}, {u"football"_s}}},
        {u"fairplay"_s, {u"Fair-Play"_s, {u"Proline"_s}, {u"rs232"_s}, {}}},
        {u"nevco"_s, {u"NEVCO"_s, {u"MPC7-W"_s, u"MPC-5"_s}, {u"nevco"_s}, {}}},
        {u"oes"_s, {u"OES"_s, {u"ISC85X"_s, u"ISC9000"_s, u"Pro"_s}, cables, {}}},
        {u"tallyforge"_s,
         {QCoreApplication::translate("ControllerCatalog", "Tallyforge wireless / ethernet bridge"),
          {u"Wireless Bridge"_s, u"Ethernet Bridge"_s},
          bridges,
          {}}},
        {u"varsity"_s, {u"Varsity / Sportable"_s, {u"Varsity"_s, u"Gen2"_s}, cables, {}}},
    };
}

QString capitalized(const QString &text)
{
    return text.left(1).toUpper() + text.mid(1);
}

QString words(const QString &key)
{
    return capitalized(QString(key).replace(u'_', u' '));
}

} // namespace

const QMap<QString, ControllerFamily> &controllerCatalog()
{
    static const QMap<QString, ControllerFamily> catalog = makeCatalog();
    return catalog;
}

QStringList allSports()
{
    return {u"basketball"_s, u"football"_s, u"baseball"_s, u"volleyball"_s,
            u"soccer"_s,     u"hockey"_s,   u"lacrosse"_s, u"wrestling"_s};
}

QString manufacturerLabel(const QString &key)
{
    const auto family = controllerCatalog().constFind(key.toLower());
    return family == controllerCatalog().constEnd() ? capitalized(key) : family->label;
}

QString sportLabel(const QString &key)
{
    return words(key);
}

QString inputTypeLabel(const QString &key)
{
    const QMap<QString, QString> labels{
        {u"cl"_s, QCoreApplication::translate("ControllerCatalog", "Current loop (CL)")},
        {u"rs232"_s, u"RS-232"_s},
        {u"rs485"_s, u"RS-485"_s},
        {u"rs422"_s, u"RS-422"_s},
        {u"wireless"_s, QCoreApplication::translate("ControllerCatalog", "Wireless")},
        {u"nevco"_s, QCoreApplication::translate("ControllerCatalog", "NEVCO serial")},
        {u"ethernet_bridge"_s, QCoreApplication::translate("ControllerCatalog", "Ethernet bridge")},
    };
    const QString lower = key.toLower();
    if (const auto label = labels.constFind(lower); label != labels.constEnd()) {
        return *label;
    }
    if (lower.startsWith(channelPrefix)) {
        return QCoreApplication::translate("ControllerCatalog", "Wireless channel %1")
            .arg(QStringView(lower).mid(channelPrefix.size()));
    }
    return words(key);
}

} // namespace tallyforge
