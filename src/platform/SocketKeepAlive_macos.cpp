// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/SocketKeepAlive.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace tallyforge::platform {

// The options' names and their unit, seconds, are those of tcp(4): TCP_KEEPALIVE is the idle time
// here.
void enableKeepAlive(qintptr socketDescriptor)
{
    const int fd = static_cast<int>(socketDescriptor);
    const auto set = [fd](int level, int option, int value) {
        static_cast<void>(setsockopt(fd, level, option, &value, sizeof value));
    };
    set(SOL_SOCKET, SO_KEEPALIVE, 1);
    set(IPPROTO_TCP, TCP_KEEPALIVE, 5);
    set(IPPROTO_TCP, TCP_KEEPINTVL, 2);
    set(IPPROTO_TCP, TCP_KEEPCNT, 3);
}

} // namespace tallyforge::platform
