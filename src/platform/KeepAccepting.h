// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <chrono>

class QTcpServer;

namespace tallyforge::platform {

/// Has a server go on after it could not open a descriptor for a connection: Qt's listener would
/// rest for good. It tries again after this time, and again, until it succeeds or listens no more.
void keepAccepting(QTcpServer *server, std::chrono::milliseconds rest);

} // namespace tallyforge::platform
