// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/ControllerPage.h"

#include "ui/manager/ControllerPanel.h"

using namespace Qt::StringLiterals;

namespace tallyforge {

ControllerPage::ControllerPage(QWidget *parent)
    : PanelPage(tr("Choose the scoreboard"), u"tallyforgeSkipController"_s, tr("Skip"), parent)
{
}

void ControllerPage::install(DeviceSession *session)
{
    auto *panel = new ControllerPanel(session, content());
    connect(panel, &ControllerPanel::saved, this, &ControllerPage::saved);
    place(panel);
}

} // namespace tallyforge
