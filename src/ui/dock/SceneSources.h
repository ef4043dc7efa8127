// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QString;

namespace tallyforge {

/// Adds a new source of a kind to the current scene and opens its properties. It gets the name, or
/// if there is such a source anywhere, the name with the first free number from 2 on. textTemplate
/// is its template, null for a kind without one. Without a scene, or when OBS makes no source of
/// this kind, nothing happens.
void addSourceToScene(const char *kind, const QString &baseName, const char *textTemplate);

} // namespace tallyforge
