// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QByteArray;
class QString;

namespace tallyforge {

/// Replaces the file at path with the given content, readable and writable by its owner only. The
/// folder is made when it is missing. A crash at any moment leaves the old or the new file whole;
/// on failure the old file stays and the result is false.
bool savePrivateFile(const QString &path, const QByteArray &content);

} // namespace tallyforge
