// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>

namespace tallyforge {

class RpcTransport;

/// A way to one device: a USB cable, Bluetooth or the local network. Main thread.
class DeviceLink : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// "usb", "ble" or "lan".
    [[nodiscard]] virtual QString kind() const = 0;
    /// Where the device is: the port's path, the Bluetooth helper's name for it, or its host.
    [[nodiscard]] virtual QString address() const = 0;
    /// Starts connecting, anew if it is open already; opened() or failed() tells the outcome.
    virtual void open() = 0;
    /// Ends the connection in silence. Nobody may delete the link meanwhile.
    virtual void close() = 0;
    /// The carrier of requests over this link; the link owns it.
    [[nodiscard]] virtual RpcTransport *transport() = 0;
    /// Whether the device must be asked for its live state; otherwise it sends envelope() by
    /// itself.
    [[nodiscard]] virtual bool pollsState() const = 0;

Q_SIGNALS:
    /// The device has answered; info is its description of itself.
    void opened(const QJsonObject &info);
    /// An open link has gone down by itself.
    void closed(const QString &reason);
    /// Live data.
    void envelope(const QJsonObject &env);
    /// The link could not be opened: a machine word and a sentence for the user.
    void failed(const QString &code, const QString &message);
};

} // namespace tallyforge
