// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/Group.h"

class QProgressBar;
class QPushButton;

namespace tallyforge {

class ThemedLabel;

/// One updatable part of a device: which version runs, buttons, and how an update goes.
class UpdateGroup final : public Group
{
    Q_OBJECT

public:
    /// name is the beginning of its widgets' object names.
    UpdateGroup(const QString &name, const QString &title, QWidget *parent);

    /// Adds a button below those that are there.
    QPushButton *addButton(const QString &name, const QString &text);
    void showVersion(const QString &running);
    /// Shows an empty bar, and nothing of an update before.
    void begin();
    /// done and total are amounts of data from outside; without a total nothing is done. Returns
    /// the percentage that the bar then shows, from 0 to 100.
    int showProgress(double done, double total);
    void showStatus(const QString &text);

private:
    ThemedLabel *m_version;
    QProgressBar *m_bar;
    ThemedLabel *m_status;
};

} // namespace tallyforge
