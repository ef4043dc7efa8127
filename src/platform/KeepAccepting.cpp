// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/KeepAccepting.h"

#include <QTcpServer>
#include <QTimer>

#include <chrono>

namespace tallyforge::platform {

namespace {

constexpr std::chrono::milliseconds rest{1000};

} // namespace

void keepAccepting(QTcpServer *server)
{
    QObject::connect(server, &QTcpServer::acceptError, server, [server] {
        QTimer::singleShot(rest, server, [server] {
            if (server->isListening()) {
                server->resumeAccepting();
            }
        });
    });
}

} // namespace tallyforge::platform
