// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/setup/SetupPage.h"

namespace tallyforge {

/// The end of the guided way: what has been set up, and what may be done with it now.
class DonePage final : public SetupPage
{
    Q_OBJECT

public:
    explicit DonePage(QWidget *parent);

    void showSummary(const QString &text, bool canClaim);
    /// The account is being asked to take the device.
    void showClaiming();
    void showClaimed();
    void refuseClaim(const QString &message);

Q_SIGNALS:
    void useRequested();
    void moreRequested();
    void claimRequested(const QString &code);
    void closeRequested();

private:
    void addClaim();
    void showClaim(bool show);

    ThemedLabel *m_summary = nullptr;
    TextField *m_code = nullptr;
    QPushButton *m_use = nullptr;
    QPushButton *m_claim = nullptr;
};

} // namespace tallyforge
