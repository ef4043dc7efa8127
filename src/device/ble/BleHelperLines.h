// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/LineBuffer.h"
#include "device/ble/BleTypes.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>

#include <optional>

namespace tallyforge {

/// Cuts what the helper sends into its JSON objects, one a line. Lines that hold anything else are
/// skipped.
class BleHelperLines
{
public:
    void append(const QByteArray &bytes) { m_buffer.append(bytes); }
    /// The next object, or nothing when no whole line is left.
    [[nodiscard]] std::optional<QJsonObject> take();
    /// Bytes of a line that has not ended yet, once take() has given nothing.
    [[nodiscard]] qsizetype size() const { return m_buffer.size(); }

private:
    LineBuffer m_buffer;
};

/// Whether a connection's first object holds the token, and so comes from the helper. Takes the
/// same time wherever the two differ. No object proves an empty token.
[[nodiscard]] bool bleProvesToken(const QJsonObject &hello, const QByteArray &token);

/// The reply that a line without "ev" is, with its message in the user's language.
[[nodiscard]] BleReply bleReply(const QJsonObject &line);

/// A sentence of the helper, which speaks English, in the user's language. A sentence that isn't
/// the helper's own stays as it is.
[[nodiscard]] QString bleSentence(const QString &english);

/// The devices in a scan's result, in its order.
[[nodiscard]] QList<BleDeviceInfo> bleDevices(const QJsonObject &result);

} // namespace tallyforge
