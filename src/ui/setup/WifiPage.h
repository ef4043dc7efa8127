// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/setup/PanelPage.h"

namespace tallyforge {

class DeviceSession;

/// Has the user bring the device into a Wi-Fi network.
class WifiPage final : public PanelPage
{
    Q_OBJECT

public:
    explicit WifiPage(QWidget *parent);

    /// Places a panel for a session, which isn't owned.
    void install(DeviceSession *session);

Q_SIGNALS:
    void joined();
};

} // namespace tallyforge
