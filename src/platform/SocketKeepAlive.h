// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QtTypes>

namespace tallyforge::platform {

/// Has the system probe a connected TCP socket that has been silent for five seconds, and end it
/// when the peer answers none of three probes two seconds apart: a peer that lost its power or its
/// cable sends no end of its own. Failures are ignored: the connection then works as without it.
void enableKeepAlive(qintptr socketDescriptor);

} // namespace tallyforge::platform
