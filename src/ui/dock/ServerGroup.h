// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/Group.h"

class QCheckBox;
class QSpinBox;

namespace tallyforge {

class App;
class ThemedLabel;

/// Switches the server for other programs on and off, and tells how it fares.
class ServerGroup final : public Group
{
    Q_OBJECT

public:
    /// app isn't owned and must outlive the group.
    explicit ServerGroup(App &app, QWidget *parent);

    void refresh();

private:
    void addPort();
    void apply();
    [[nodiscard]] QString statusText() const;

    App &m_app;
    QCheckBox *m_enabled = nullptr;
    QSpinBox *m_port = nullptr;
    int m_storedPort = 0; // as last shown; until it changes the box belongs to the user
    QCheckBox *m_allowNetwork = nullptr;
    ThemedLabel *m_status = nullptr;
};

} // namespace tallyforge
