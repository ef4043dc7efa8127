// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/ManagerPage.h"

#include "ui/manager/DeviceManager.h"
#include "ui/widgets/ThemedLabel.h"

using namespace Qt::StringLiterals;

namespace tallyforge {

ManagerPage::ManagerPage(SettingsStore &settings, QWidget *parent)
    : SetupPage(Content::ScrollsItself, parent)
    , m_settings(settings)
{
    auto *row = new QHBoxLayout;
    column()->addLayout(row);
    m_title = addTitle({}, row);
    m_title->setObjectName(u"tallyforgeManagerTitle"_s);
    row->setStretchFactor(m_title, 1);
    const QPushButton *use =
        addButton(u"tallyforgeUseManaged"_s, tr("Use live scores in OBS"), row);
    connect(use, &QPushButton::clicked, this, &ManagerPage::useRequested);
    const QPushButton *end = addButton(u"tallyforgeDisconnect"_s, tr("Disconnect"), row);
    connect(end, &QPushButton::clicked, this, &ManagerPage::disconnectRequested);
    m_place = new QVBoxLayout;
    column()->addLayout(m_place, 1);
}

void ManagerPage::prepare(DeviceSession *session)
{
    if (!m_manager) {
        m_manager = new DeviceManager(session, m_settings, content());
        m_place->addWidget(m_manager);
        setFirstField(m_manager);
        m_isPrepared = true;
    }
}

DeviceManager *ManagerPage::install(DeviceSession *session, const QString &title)
{
    if (!m_isPrepared) {
        dropManager();
        prepare(session);
    }
    m_isPrepared = false;
    setDevice(title);
    return m_manager;
}

void ManagerPage::setDevice(const QString &title)
{
    setTitleText(m_title, title);
}

void ManagerPage::refresh()
{
    if (m_manager) {
        m_manager->showPage(m_manager->currentIndex());
    }
}

void ManagerPage::dropManager()
{
    if (m_manager) {
        m_place->removeWidget(m_manager);
        m_manager->leave();
        m_manager.clear();
    }
    m_isPrepared = false;
}

} // namespace tallyforge
