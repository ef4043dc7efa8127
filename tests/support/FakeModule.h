// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge::test {

/// Stands in for libobs's knowledge of a loaded module: where the plug-in finds its configuration.
void setConfigFolder(const QString &folder);

} // namespace tallyforge::test
