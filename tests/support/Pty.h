// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QString>

#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tallyforge::test {

/// A real pseudo-terminal: the far end of a serial port whose near end lies at path().
class Pty
{
public:
    Pty()
        : m_fd(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
        grantpt(m_fd);
        unlockpt(m_fd);
        m_path = QString::fromLocal8Bit(ptsname(m_fd));
    }
    ~Pty() { unplug(); }
    Pty(const Pty &) = delete;
    Pty &operator=(const Pty &) = delete;

    [[nodiscard]] int fd() const { return m_fd; }
    [[nodiscard]] QString path() const { return m_path; }
    void send(const QByteArray &bytes) const
    {
        if (write(m_fd, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size()) {
            std::abort();
        }
    }
    [[nodiscard]] QByteArray take() const
    {
        QByteArray all;
        char buffer[4096];
        for (ssize_t count = 0; (count = read(m_fd, buffer, sizeof buffer)) > 0;) {
            all.append(buffer, count);
        }
        return all;
    }
    void unplug()
    {
        if (m_fd >= 0) {
            close(std::exchange(m_fd, -1));
        }
    }

private:
    int m_fd;
    QString m_path;
};

} // namespace tallyforge::test
