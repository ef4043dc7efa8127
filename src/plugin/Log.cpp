// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/Log.h"

#include <QString>

#include <util/base.h>

namespace tallyforge::log {

namespace {

void write(int level, const QString &text)
{
    blog(level, "[tallyforge] %s", text.toUtf8().constData());
}

} // namespace

void info(const QString &text)
{
    write(LOG_INFO, text);
}

void warning(const QString &text)
{
    write(LOG_WARNING, text);
}

void error(const QString &text)
{
    write(LOG_ERROR, text);
}

} // namespace tallyforge::log
