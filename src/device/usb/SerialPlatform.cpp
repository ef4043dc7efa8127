// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/SerialPlatform.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>

#include <cerrno>
#include <chrono>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tallyforge::serial_platform {

struct Handle
{
    int fd = -1;
    QByteArray waiting;       // the driver has no room for it yet
    QElapsedTimer sinceTaken; // since the driver took something, while bytes wait
};

namespace {

constexpr std::chrono::milliseconds stallLimit{3100};
constexpr qsizetype maxWaiting = 131072; // about two requests of the largest size

void store(QString *error, const QString &text)
{
    if (error != nullptr) {
        *error = text;
    }
}

QString openFailure(int code)
{
    if (code == EBUSY || code == EACCES) {
        return QCoreApplication::translate(
            "tallyforge::SerialPort",
            "That USB port is in use by another program (close any serial monitor) or access "
            "was denied.");
    }
    return QCoreApplication::translate("tallyforge::SerialPort", "Could not open the USB port: %1")
        .arg(QString::fromLocal8Bit(std::strerror(code)));
}

speed_t speedOf(int baud)
{
    switch (baud) {
    case 9600:
        return B9600;
    case 19200:
        return B19200;
    case 38400:
        return B38400;
    case 57600:
        return B57600;
    case 230400:
        return B230400;
    default:
        return B115200;
    }
}

// Failures from here on are ignored, because some drivers lack one thing or another and work all
// the same.
void configure(int fd, termios settings, int baud)
{
    cfmakeraw(&settings);
    constexpr tcflag_t cleared = CSIZE | CSTOPB | CREAD | PARENB | HUPCL | CLOCAL | CRTSCTS;
    settings.c_cflag &= ~cleared;
    settings.c_cflag |= CS8 | CREAD | CLOCAL;
    settings.c_cc[VMIN] = 0;
    settings.c_cc[VTIME] = 0;
    cfsetispeed(&settings, speedOf(baud));
    cfsetospeed(&settings, speedOf(baud));
    tcsetattr(fd, TCSANOW, &settings);

    // Raised, these two lines would hold the device's chip in reset or in its boot loader.
    const int lines = TIOCM_DTR | TIOCM_RTS;
    ioctl(fd, TIOCMBIC, &lines);
    ioctl(fd, TIOCEXCL);
    tcflush(fd, TCIOFLUSH);
}

bool isTemporary(int code)
{
    return code == EAGAIN || code == EINTR;
}

} // namespace

Handle *openPort(const QString &path, int baud, QString *error)
{
    const int fd = open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        store(error, openFailure(errno));
        return nullptr;
    }
    termios settings{};
    if (tcgetattr(fd, &settings) != 0) {
        close(fd);
        store(error,
              QCoreApplication::translate("tallyforge::SerialPort", "That is not a serial port."));
        return nullptr;
    }
    configure(fd, settings, baud);
    auto *handle = new Handle;
    handle->fd = fd;
    return handle;
}

void closePort(Handle *handle)
{
    if (handle != nullptr) {
        ioctl(handle->fd, TIOCNXCL); // a pseudo-terminal would stay claimed
        // Linux holds close() up for 30 s while a device that hangs takes nothing any more.
        tcflush(handle->fd, TCOFLUSH);
        close(handle->fd);
        delete handle;
    }
}

qint64 readSome(Handle *handle, char *buffer, qint64 size)
{
    const ssize_t count = read(handle->fd, buffer, static_cast<size_t>(size));
    if (count > 0) {
        return count;
    }
    if (count < 0) {
        return isTemporary(errno) ? 0 : -1;
    }
    // A port whose device has been pulled out reads as empty too.
    pollfd state{handle->fd, 0, 0};
    return poll(&state, 1, 0) > 0 && (state.revents & POLLHUP) != 0 ? -1 : 0;
}

bool writeAll(Handle *handle, const QByteArray &bytes)
{
    if (handle->waiting.isEmpty()) {
        handle->waiting = bytes;
        handle->sinceTaken.start();
        return keepWriting(handle);
    }
    if (handle->waiting.size() + bytes.size() > maxWaiting) {
        return false;
    }
    handle->waiting.append(bytes);
    return true;
}

bool keepWriting(Handle *handle)
{
    bool failed = false;
    while (!failed && !handle->waiting.isEmpty()) {
        const ssize_t count =
            write(handle->fd, handle->waiting.constData(), size_t(handle->waiting.size()));
        if (count > 0) {
            handle->waiting.remove(0, count);
            handle->sinceTaken.start();
        } else if (count < 0 && isTemporary(errno) &&
                   handle->sinceTaken.durationElapsed() < stallLimit) {
            return true;
        } else {
            failed = true;
        }
    }
    handle->waiting.clear();
    return !failed;
}

bool isWriting(const Handle *handle)
{
    return !handle->waiting.isEmpty();
}

QList<SerialPortInfo> list()
{
    const QStringList names = QDir(u"/dev"_s).entryList(
        {u"cu.usb*"_s, u"cu.wch*"_s, u"cu.SLAB*"_s, u"cu.CH34*"_s, u"ttyUSB*"_s, u"ttyACM*"_s},
        QDir::Files | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    QList<SerialPortInfo> ports;
    for (const QString &name : names) {
        ports.append({"/dev/"_L1 + name, name,
                      name.contains("usbmodem"_L1) || name.startsWith("ttyACM"_L1)});
    }
    return ports;
}

} // namespace tallyforge::serial_platform
