// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/PanelPage.h"

#include "ui/manager/PanelBase.h"

namespace tallyforge {

PanelPage::PanelPage(const QString &title, const QString &skipName, const QString &skipText,
                     QWidget *parent)
    : SetupPage(Content::ScrollsItself, parent)
{
    addTitle(title);
    m_place = new QVBoxLayout;
    column()->addLayout(m_place, 1);
    QPushButton *skip = addButton(skipName, skipText);
    skip->setFlat(true);
    connect(skip, &QPushButton::clicked, this, &PanelPage::skipped);
}

void PanelPage::place(PanelBase *panel)
{
    dropPanel();
    m_panel = panel;
    m_place->addWidget(panel);
    // The one that the panel meant to be its dialog's default button, while it was the last to be
    // made.
    const QList<QPushButton *> buttons = panel->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->isDefault()) {
            setReturnButton(button);
            return;
        }
    }
}

void PanelPage::dropPanel()
{
    if (m_panel) {
        m_place->removeWidget(m_panel);
        m_panel->hide();
        m_panel->deleteLater();
        m_panel.clear();
    }
}

void PanelPage::refresh()
{
    if (m_panel) {
        m_panel->refresh();
    }
}

} // namespace tallyforge
