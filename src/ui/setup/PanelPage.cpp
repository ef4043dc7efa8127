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
    m_skip = addButton(skipName, skipText);
    m_skip->setFlat(true);
    connect(m_skip, &QPushButton::clicked, this, &PanelPage::skipped);
}

void PanelPage::place(PanelBase *panel)
{
    dropPanel();
    m_panel = panel;
    m_place->addWidget(panel);
    m_skip->setEnabled(true);
    QWidget *last = panel; // in the order of Tab, in which the panel stands above the button
    for (QWidget *next = last->nextInFocusChain(); panel->isAncestorOf(next);
         next = next->nextInFocusChain()) {
        last = next;
    }
    setTabOrder(last, m_skip);
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

void PanelPage::leave()
{
    m_skip->setEnabled(false);
}

void PanelPage::refresh()
{
    if (m_panel) {
        m_panel->refresh();
    }
}

} // namespace tallyforge
