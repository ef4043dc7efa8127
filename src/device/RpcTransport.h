// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace tallyforge {

/// Carries one whole JSON text at a time to a device, and one back. It doesn't know the
/// texts' meaning. Main thread.
class RpcTransport : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether a request can be sent now.
    [[nodiscard]] virtual bool isOpen() const = 0;
    /// Hands a compact JSON text to the carrier. A failure comes by sendFailed(), maybe at once.
    virtual void send(const QByteArray &json) = 0;

Q_SIGNALS:
    /// A whole text has come from the device.
    void message(const QByteArray &json);
    /// The text that was sent last could not be delivered: a machine word and a sentence for the
    /// user.
    void sendFailed(const QString &code, const QString &message);
};

} // namespace tallyforge
