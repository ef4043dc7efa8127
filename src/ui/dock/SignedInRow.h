// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QWidget>

class QBoxLayout;
class QLabel;
class QPushButton;

namespace tallyforge {

class PortalClient;

/// Says who is signed in, and signs out.
class SignedInRow final : public QWidget
{
    Q_OBJECT

public:
    /// portal isn't owned and must outlive the row.
    explicit SignedInRow(PortalClient &portal, QWidget *parent);

    void refresh();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void stackIfNarrow();

    PortalClient &m_portal;
    QLabel *m_label;
    QPushButton *m_signOut;
    QBoxLayout *m_row; // of the widget
};

} // namespace tallyforge
