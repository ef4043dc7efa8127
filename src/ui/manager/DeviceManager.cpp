// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/DeviceManager.h"

#include "ui/manager/AdvancedPanel.h"
#include "ui/manager/CloudPanel.h"
#include "ui/manager/SecurityPanel.h"
#include "ui/manager/SettingsPanel.h"
#include "ui/manager/StatusPanel.h"
#include "ui/manager/UpdatesPanel.h"
#include "ui/manager/WifiPanel.h"

#include <QPushButton>
#include <QSignalBlocker>
#include <QTabBar>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

DeviceManager::DeviceManager(DeviceSession *session, SettingsStore &settings, QWidget *parent)
    : QTabWidget(parent)
    , m_session(session)
{
    setObjectName(u"tallyforgeManager"_s);
    setAccessibleName(tr("Device settings and tools"));
    // No tab is out of view: OBS's themes are lavish with room, and long titles may lose letters.
    tabBar()->setStyleSheet(
        u"QTabBar::tab { min-width: 0px; padding-left: 4px; padding-right: 4px; }"_s);
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideRight);
    add(tr("Status"), maker<StatusPanel>());
    add(tr("Wi-Fi"), maker<WifiPanel>());
    add(tr("Settings"), maker<SettingsPanel>());
    add(tr("Security"), [this](QWidget *tab) { return makeSecurity(tab); });
    add(tr("Updates"), maker<UpdatesPanel>());
    add(tr("Cloud"), [this, &settings](QWidget *tab) { return makeCloud(settings, tab); });
    add(tr("Advanced"), maker<AdvancedPanel>());
    connect(this, &QTabWidget::currentChanged, this, &DeviceManager::refreshPage);
    connect(&m_idle, &QTimer::timeout, this, &DeviceManager::makeAhead);
    m_idle.start(0);
}

template <class Panel> DeviceManager::Maker DeviceManager::maker()
{
    return [this](QWidget *tab) { return new Panel(m_session, tab); };
}

PanelBase *DeviceManager::makeSecurity(QWidget *parent)
{
    auto *panel = new SecurityPanel(m_session, parent);
    connect(panel, &SecurityPanel::apiToken, this, &DeviceManager::apiToken);
    connect(panel, &SecurityPanel::passwordChanged, this, &DeviceManager::passwordChanged);
    return panel;
}

PanelBase *DeviceManager::makeCloud(SettingsStore &settings, QWidget *parent)
{
    auto *panel = new CloudPanel(m_session, settings, parent);
    connect(panel, &CloudPanel::deviceIdChanged, this, &DeviceManager::deviceIdChanged);
    return panel;
}

void DeviceManager::add(const QString &title, const Maker &make)
{
    auto *tab = new QWidget(this);
    (new QVBoxLayout(tab))->setContentsMargins({});
    m_makers.append(make);
    m_panels.append(nullptr);
    addTab(tab, title);
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
    if (index < 0 || index >= m_panels.size()) {
        return;
    }
    makePanel(index);
    m_panels.at(index)->refresh();
}

void DeviceManager::makePanel(int index)
{
    if (m_panels.at(index) == nullptr) {
        PanelBase *panel = m_makers.at(index)(widget(index));
        m_panels[index] = panel;
        widget(index)->layout()->addWidget(panel);
        panel->show(); // the layout would show it in the next turn only
    }
}

// Qt polishes and measures hidden panels as well, so that little is left to do on the visit.
void DeviceManager::makeAhead()
{
    const qsizetype next = m_panels.indexOf(nullptr);
    if (next < 0) {
        m_idle.stop();
        return;
    }
    QPushButton *inUse = nullptr;
    const QList<QPushButton *> buttons = window()->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->isDefault() && button->isVisible()) {
            inUse = button;
        }
    }
    makePanel(int(next));
    if (inUse != nullptr) {
        inUse->setDefault(true); // the new panel's may have become it
    }
}

void DeviceManager::leave()
{
    hide();
    m_idle.disconnect(this);
    connect(&m_idle, &QTimer::timeout, this, &DeviceManager::dropNext);
    m_idle.start(0);
}

void DeviceManager::dropNext()
{
    for (PanelBase *&panel : m_panels) {
        if (panel != nullptr) {
            delete std::exchange(panel, nullptr);
            return;
        }
    }
    m_idle.stop();
    deleteLater();
}

} // namespace tallyforge
