// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/DonePage.h"

#include "ui/widgets/Announcement.h"
#include "ui/widgets/TextField.h"
#include "ui/widgets/ThemedLabel.h"

using namespace Qt::StringLiterals;

namespace tallyforge {

DonePage::DonePage(QWidget *parent)
    : SetupPage(Content::IsScrolled, parent)
{
    addTitle(tr("All set"));
    m_summary = addText(u"tallyforgeSummary"_s);
    m_use = addButton(u"tallyforgeUseDevice"_s, tr("Use this device's live scores in OBS"));
    connect(m_use, &QPushButton::clicked, this, &DonePage::useRequested);
    const QPushButton *more =
        addButton(u"tallyforgeMoreSettings"_s, tr("More settings and tools…"));
    connect(more, &QPushButton::clicked, this, &DonePage::moreRequested);
    addClaim();
    column()->addStretch();
    const QPushButton *close = addButton(u"tallyforgeClose"_s, tr("Close"));
    connect(close, &QPushButton::clicked, this, &DonePage::closeRequested);
    setFirstField(m_use);
    setReturnButton(m_use);
}

void DonePage::addClaim()
{
    m_code =
        addField(u"tallyforgeClaimCode"_s, tr("Claim code from the device's box or account email"));
    m_claim = addButton(u"tallyforgeClaim"_s, tr("Add this device to my account"));
    connect(m_claim, &QPushButton::clicked, this,
            [this] { Q_EMIT claimRequested(m_code->text().trimmed()); });
    // Return in the field is about the code.
    connect(m_code, &QLineEdit::textChanged, this,
            [this](const QString &code) { setReturnButton(code.isEmpty() ? m_use : m_claim); });
}

void DonePage::showSummary(const QString &text, bool canClaim)
{
    m_summary->setError(false);
    m_summary->setText(text);
    m_code->clear(); // it may be another device's
    showClaim(canClaim);
}

void DonePage::showClaiming()
{
    m_claim->setEnabled(false);
}

void DonePage::showClaimed()
{
    m_summary->setError(false);
    m_summary->setText(tr("Added to your account."));
    m_code->clear();
    showClaim(false);
    announce(m_summary, m_summary->text(), false);
}

void DonePage::refuseClaim(const QString &message)
{
    m_claim->setEnabled(true);
    m_summary->setError(true);
    m_summary->setText(message);
    announce(m_summary, message, true);
}

void DonePage::showClaim(bool show)
{
    m_claim->setEnabled(true);
    m_code->setVisible(show);
    m_claim->setVisible(show);
}

} // namespace tallyforge
