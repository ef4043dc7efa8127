// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/DeviceManager.h"

#include "ui/manager/SettingsPanel.h"
#include "ui/manager/StatusPanel.h"
#include "ui/manager/WifiPanel.h"

#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace tallyforge {

DeviceManager::DeviceManager(DeviceSession *session, QWidget *parent)
    : QTabWidget(parent)
{
    setObjectName(u"tallyforgeManager"_s);
    setAccessibleName(tr("Device settings and tools"));
    add(new StatusPanel(session, this), tr("Status"));
    add(new WifiPanel(session, this), tr("Wi-Fi"));
    add(new SettingsPanel(session, this), tr("Settings"));
    connect(this, &QTabWidget::currentChanged, this, &DeviceManager::refreshPage);
}

void DeviceManager::add(PanelBase *panel, const QString &title)
{
    m_panels.append(panel);
    addTab(panel, title);
}

void DeviceManager::showPage(int index)
{
    {
        const QSignalBlocker once(this);
        setCurrentIndex(index);
    }
    refreshPage(index);
}

void DeviceManager::refreshPage(int index)
{
    if (index >= 0 && index < m_panels.size()) {
        m_panels.at(index)->refresh();
    }
}

} // namespace tallyforge
