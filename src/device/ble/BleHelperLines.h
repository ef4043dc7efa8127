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

/// Whether a connection's first object proves that it comes from whom the token was given to. Takes
/// the same time wherever the two differ. An empty token is never proved.
[[nodiscard]] bool bleProvesToken(const QJsonObject &hello, const QByteArray &token);

/// A line without "ev" as the reply that it is.
[[nodiscard]] BleReply bleReply(const QJsonObject &line);

/// The devices in a scan's result, in its order.
[[nodiscard]] QList<BleDeviceInfo> bleDevices(const QJsonObject &result);

} // namespace tallyforge
