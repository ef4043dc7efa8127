// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QString;

/// Lines in OBS's log, each with the plug-in's prefix: one English sentence, never a secret. Any
/// thread.
namespace tallyforge::log {

void info(const QString &text);
void warning(const QString &text);
void error(const QString &text);

} // namespace tallyforge::log
