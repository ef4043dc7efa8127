// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/KeepAccepting.h"

#include <QTcpServer>
#include <QTimer>

namespace tallyforge::platform {

void keepAccepting(QTcpServer *server, std::chrono::milliseconds rest)
{
    QObject::connect(server, &QTcpServer::acceptError, server, [server, rest] {
        QTimer::singleShot(rest, server, [server] {
            if (server->isListening()) {
                server->resumeAccepting();
            }
        });
    });
}

} // namespace tallyforge::platform
