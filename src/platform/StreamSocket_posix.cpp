// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/StreamSocket.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tallyforge::platform {

namespace {

bool mayTryAgain(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

} // namespace

StreamSocket::StreamSocket(qintptr descriptor)
    : m_descriptor(static_cast<int>(descriptor))
{
    fcntl(m_descriptor, F_SETFL, fcntl(m_descriptor, F_GETFL) | O_NONBLOCK);
#ifndef MSG_NOSIGNAL
    const int on = 1;
    setsockopt(m_descriptor, SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
}

StreamSocket::~StreamSocket()
{
    close();
}

void StreamSocket::setLowDelay()
{
    const int on = 1;
    setsockopt(m_descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

QByteArray StreamSocket::receive(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    const auto count = recv(m_descriptor, bytes.data(), static_cast<size_t>(size), 0);
    m_ended = m_ended || (count == 0 && size > 0);
    m_broken = m_broken || (count < 0 && !mayTryAgain(errno));
    bytes.truncate(count < 0 ? 0 : count);
    return bytes;
}

qsizetype StreamSocket::send(QByteArrayView bytes)
{
#ifdef MSG_NOSIGNAL
    constexpr int flags = MSG_NOSIGNAL;
#else
    constexpr int flags = 0;
#endif
    const auto count =
        ::send(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size()), flags);
    m_broken = m_broken || (count < 0 && !mayTryAgain(errno));
    return count < 0 ? 0 : count;
}

void StreamSocket::close()
{
    if (m_descriptor >= 0) {
        ::close(std::exchange(m_descriptor, -1));
    }
}

} // namespace tallyforge::platform
