// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace tallyforge {

/// A serial port that a device may be behind.
struct SerialPortInfo
{
    QString path; ///< "/dev/…"
    QString name; ///< without the folder
    /// The name is that of a chip with USB of its own, such as the devices have. A guide, no
    /// filter.
    bool likelyDevice = false;
};

/// The operating system's side of a serial port (POSIX termios).
namespace serial_platform {

struct Handle;

/// Opens a port raw, 8N1 without flow control, and claims it. Null on failure, with a sentence for
/// the user in error, which may be null. A baud rate that isn't a usual one becomes 115200.
[[nodiscard]] Handle *openPort(const QString &path, int baud, QString *error);
/// Closes and frees a handle; null is ignored.
void closePort(Handle *handle);
/// The number of bytes read, 0 when nothing is waiting, -1 when the port has failed.
[[nodiscard]] qint64 readSome(Handle *handle, char *buffer, qint64 size);
/// Takes all bytes over and never blocks: bytes that the driver has no room for wait in the handle,
/// and keepWriting() goes on with them. False when the port has failed or too much waits already; a
/// part of the bytes may have gone out then.
[[nodiscard]] bool writeAll(Handle *handle, const QByteArray &bytes);
/// Hands waiting bytes over as far as the driver takes them. False when the port has failed or
/// has taken nothing for about three seconds; the bytes that waited are lost then.
[[nodiscard]] bool keepWriting(Handle *handle);
/// Whether bytes wait for the driver.
[[nodiscard]] bool isWriting(const Handle *handle);
/// The ports that are there now, by name.
[[nodiscard]] QList<SerialPortInfo> list();

} // namespace serial_platform

} // namespace tallyforge
