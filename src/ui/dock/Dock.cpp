// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/Dock.h"

#include "ui/dock/HomePage.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOption>
#include <QTimer>
#include <QVBoxLayout>

#include <initializer_list>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

Dock::Dock(App &app, const char *textTemplate)
    : m_app(app)
    , m_textTemplate(textTemplate)
{
    setObjectName(u"tallyforgeDock"_s);
}

// OBS's part of the dock, which lies below, costs more to draw than a new score. A background
// without gaps spares it that. A theme takes the attribute away with each polish.
bool Dock::event(QEvent *event)
{
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange) {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }
    return done;
}

void Dock::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().window());
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

// Not at once: while OBS puts its window together it shows a dock that it hides right after, and
// one that was left open is shown before the window is.
void Dock::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_home) {
        QTimer::singleShot(0, this, &Dock::makePage);
    }
}

// In three turns of the event loop, so that other work may go in between: making the page, styling
// and measuring it, placing it. From the outside in, see PageStyle; and with the dock's own size,
// so that texts are measured for the right width at once.
void Dock::makePage()
{
    if (m_home || !isVisible()) {
        return;
    }
    m_scrolled = new QScrollArea(this);
    m_scrolled->setWidgetResizable(true);
    m_scrolled->setFrameShape(QFrame::NoFrame);
    m_page = new QWidget(m_scrolled->viewport());
    m_pages = new QStackedWidget(m_page);
    m_home = new HomePage(m_app, m_textTemplate, this, m_pages);
    for (QWidget *widget : std::initializer_list<QWidget *>{m_scrolled, m_page, m_pages, m_home}) {
        widget->resize(size());
    }
    QTimer::singleShot(0, this, &Dock::measurePage);
}

void Dock::measurePage()
{
    m_pages->addWidget(m_home);
    QTimer::singleShot(0, this, &Dock::placePage);
}

void Dock::placePage()
{
    auto *inner = new QVBoxLayout(m_page);
    inner->setContentsMargins({});
    inner->addWidget(m_pages);
    inner->addStretch();
    m_scrolled->setWidget(m_page);

    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(m_scrolled);
}

} // namespace tallyforge
