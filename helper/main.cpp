// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The program that does Bluetooth for the plug-in, which starts it.

#include "helper/Helper.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QLoggingCategory::CategoryFilter usualFilter;

// Passwords are among the writes.
void keepWritesOut(QLoggingCategory *category)
{
    usualFilter(category);
    if (QLatin1StringView(category->categoryName()).startsWith("qt.bluetooth"_L1)) {
        category->setEnabled(QtDebugMsg, false);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    usualFilter = QLoggingCategory::installFilter(nullptr); // the next call already needs it
    QLoggingCategory::installFilter(keepWritesOut);
    qunsetenv("QDBUS_DEBUG"); // this would log them as well
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption port(u"port"_s, u"The plug-in's port on loopback."_s, u"port"_s);
    const QCommandLineOption token(u"token"_s, u"What proves this program to it."_s, u"token"_s);
    parser.addOptions({port, token});
    const bool parsed = parser.parse(QCoreApplication::arguments());
    const uint number = parser.value(port).toUInt();
    if (!parsed || number == 0 || number > 65535 || parser.value(token).isEmpty()) {
        std::fputs("This program belongs to the Tallyforge plug-in for OBS, which starts it.\n",
                   stderr);
        return 2;
    }
    tallyforge::helper::Helper helper;
    QObject::connect(&helper, &tallyforge::helper::Helper::finished, &application,
                     &QCoreApplication::quit, Qt::QueuedConnection);
    helper.start(static_cast<quint16>(number), parser.value(token));
    return QCoreApplication::exec();
}
