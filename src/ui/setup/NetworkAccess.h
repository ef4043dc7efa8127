// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge {

class App;
class DeviceSession;

/// Stores how a device is followed over the local network. The token is a secret. Nothing happens
/// without all three.
void storeNetworkAccess(App &app, const QString &id, const QString &host, const QString &token);

/// Asks a device for its token and stores how it is followed over the local network, also when the
/// dialog has closed meanwhile. Nothing happens when the device is on no network.
void rememberNetworkAccess(App &app, DeviceSession *session);

} // namespace tallyforge
