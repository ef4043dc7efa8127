// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge::test {

/// Where the plug-in finds its configuration: stands in for what libobs knows of a loaded module.
void setConfigFolder(const QString &folder);

} // namespace tallyforge::test
