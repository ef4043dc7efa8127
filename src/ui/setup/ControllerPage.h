// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/setup/PanelPage.h"

namespace tallyforge {

class DeviceSession;

/// Has the user choose the kind of scoreboard that the device reads.
class ControllerPage final : public PanelPage
{
    Q_OBJECT

public:
    explicit ControllerPage(QWidget *parent);

    /// Places a panel for a session, which isn't owned.
    void install(DeviceSession *session);

Q_SIGNALS:
    void saved();
};

} // namespace tallyforge
