// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/setup/SetupPage.h"

#include <QPointer>

namespace tallyforge {

class PanelBase;

/// A step of the guided way: a panel that works with the session, and a button to go past it.
class PanelPage : public SetupPage
{
    Q_OBJECT

public:
    /// Asks the device for what the panel shows.
    void refresh();
    /// Shows that the user has skipped the step, until a panel is placed anew.
    void leave();
    [[nodiscard]] bool hasPanel() const { return m_panel != nullptr; }
    /// Takes the panel away, because its session goes.
    void dropPanel();

Q_SIGNALS:
    void skipped();

protected:
    PanelPage(const QString &title, const QString &skipName, const QString &skipText,
              QWidget *parent);

    /// Shows a panel, a child of content(), in place of the one before.
    void place(PanelBase *panel);

private:
    QVBoxLayout *m_place = nullptr;
    QPushButton *m_skip = nullptr;
    QPointer<PanelBase> m_panel;
};

} // namespace tallyforge
