// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/SignedInRow.h"

#include "portal/PortalClient.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace tallyforge {

SignedInRow::SignedInRow(PortalClient &portal, QWidget *parent)
    : QWidget(parent)
    , m_portal(portal)
    , m_label(new QLabel(this))
    , m_signOut(new QPushButton(tr("Sign out"), this))
    , m_row(new QHBoxLayout(this))
{
    setObjectName(u"tallyforgeSignedIn"_s);
    m_label->setObjectName(u"tallyforgeSignedInAs"_s);
    m_label->setTextFormat(Qt::RichText);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_label->setWordWrap(true);
    m_label->setMinimumWidth(1);

    m_signOut->setObjectName(u"tallyforgeSignOut"_s);
    m_signOut->setFlat(true);
    connect(m_signOut, &QPushButton::clicked, &m_portal, &PortalClient::signOut);

    m_row->setContentsMargins({});
    m_row->addWidget(m_label, 1);
    m_row->addWidget(m_signOut);
}

void SignedInRow::refresh()
{
    const bool signedIn = m_portal.signedIn();
    const QString email = signedIn ? m_portal.email() : QString();
    m_label->setText(signedIn ? tr("Signed in as <b>%1</b>").arg(email.toHtmlEscaped())
                              : QString());
    m_label->setToolTip(Qt::convertFromPlainText(email)); // because it may be longer than the row
    setVisible(signedIn);
    stackIfNarrow();
}

void SignedInRow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    stackIfNarrow();
}

// An address is one word, which can't be wrapped.
void SignedInRow::stackIfNarrow()
{
    const int needed =
        m_label->minimumSizeHint().width() + m_row->spacing() + m_signOut->sizeHint().width();
    m_row->setDirection(needed > width() ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

} // namespace tallyforge
