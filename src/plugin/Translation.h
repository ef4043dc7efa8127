// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <memory>

class QString;
class QTranslator;

namespace tallyforge {

/// Has all texts come in the language of an OBS locale such as "de-DE", until the result is
/// deleted. Null when the folder holds no translation for it: then they stay English. Main thread.
std::unique_ptr<QTranslator> installTranslation(const QString &locale, const QString &folder);

} // namespace tallyforge
