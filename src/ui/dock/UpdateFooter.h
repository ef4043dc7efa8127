// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/Group.h"

class QPushButton;

namespace tallyforge {

class App;
class ThemedLabel;
struct UpdateView;

/// The plug-in's version, and the search for newer ones.
class UpdateFooter final : public Group
{
    Q_OBJECT

public:
    /// app isn't owned and must outlive the group.
    explicit UpdateFooter(App &app, QWidget *parent);

    void refresh(const UpdateView &view);

private:
    QPushButton *m_check = nullptr;
    ThemedLabel *m_status = nullptr;
};

} // namespace tallyforge
