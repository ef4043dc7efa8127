// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/ScoreView.h"

#include "ui/widgets/ThemedLabel.h"

#include <QEvent>

using namespace Qt::StringLiterals;

namespace tallyforge {

ScoreView::ScoreView(QWidget *parent)
    : QWidget(parent)
    , m_label(new ThemedLabel(this, ThemedLabel::Tone::Normal, ThemedLabel::Size::Large))
{
    m_label->setObjectName(u"tallyforgeScore"_s);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    makeBold(m_label);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    hide();
}

void ScoreView::showText(const QString &text)
{
    if (m_label->text() != text) {
        m_label->setText(text);
        setVisible(!text.isEmpty());
        fit();
    }
}

QSize ScoreView::sizeHint() const
{
    const int width = m_label->sizeHint().width();
    return {width, heightForWidth(width)};
}

int ScoreView::heightForWidth(int width) const
{
    return m_label->heightForWidth(width);
}

bool ScoreView::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) { // from the label
        fit();
    }
    return QWidget::event(event);
}

void ScoreView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_label->resize(size());
}

void ScoreView::fit()
{
    if (heightForWidth(width()) != height()) {
        updateGeometry();
    }
}

} // namespace tallyforge
