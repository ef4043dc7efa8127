// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QTcpServer;

namespace tallyforge::platform {

/// Has a server go on after it could not open a descriptor for a connection: Qt's listener would
/// rest for good. It tries again after a second, and again, until it succeeds or listens no more.
void keepAccepting(QTcpServer *server);

} // namespace tallyforge::platform
