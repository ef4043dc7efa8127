// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/SocketSend.h"

#include <QByteArray>

#include <algorithm>

#include <sys/socket.h>

namespace tallyforge::platform {

qsizetype sendNow(qintptr socketDescriptor, const QByteArray &bytes)
{
#ifdef MSG_NOSIGNAL
    constexpr int flags = MSG_NOSIGNAL;
#else
    constexpr int flags = 0;
    const int on = 1;
    setsockopt(static_cast<int>(socketDescriptor), SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
    const auto taken = ::send(static_cast<int>(socketDescriptor), bytes.constData(),
                              static_cast<size_t>(bytes.size()), flags);
    return std::max<qsizetype>(taken, 0);
}

} // namespace tallyforge::platform
