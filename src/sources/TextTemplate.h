// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

#include <functional>

namespace tallyforge {

/// Replaces each {name} of a template, a name being ASCII letters, digits and underscores, by what
/// valueOf gives for it. Any other text, braces included, stands as it is.
[[nodiscard]] QString expandTemplate(const QString &text,
                                     const std::function<QString(const QString &name)> &valueOf);

} // namespace tallyforge
