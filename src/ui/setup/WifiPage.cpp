// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/WifiPage.h"

#include "ui/manager/WifiPanel.h"

using namespace Qt::StringLiterals;

namespace tallyforge {

WifiPage::WifiPage(QWidget *parent)
    : PanelPage(tr("Connect the device to Wi-Fi"), u"tallyforgeSkipWifi"_s,
                tr("Skip – use this computer's internet over USB, or the device already has Wi-Fi"),
                parent)
{
}

void WifiPage::install(DeviceSession *session)
{
    auto *panel = new WifiPanel(session, content());
    connect(panel, &WifiPanel::joined, this, &WifiPage::joined);
    place(panel);
}

} // namespace tallyforge
