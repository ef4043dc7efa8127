// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/ElidingComboBox.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QResizeEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>

#include <algorithm>

namespace tallyforge {

ElidingComboBox::ElidingComboBox(QWidget *parent)
    : PassingWheel(parent)
{
}

// A policy of Qt's would do for the size, but makes the list.
QSize ElidingComboBox::sizeHint() const
{
    constexpr int leastCharacters = 8;
    constexpr int leastHeight = 14; // pixels, as in other combo boxes
    constexpr int gap = 2;
    ensurePolished();
    QStyleOptionComboBox option;
    QComboBox::initStyleOption(&option);
    const QFontMetrics metrics = fontMetrics();
    const QSize contents(leastCharacters * metrics.horizontalAdvance(u'X'),
                         std::max(metrics.height(), leastHeight) + gap);
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, contents, this);
}

void ElidingComboBox::showPopup()
{
    if (!m_hasList) {
        m_hasList = true;
        view()->setTextElideMode(Qt::ElideMiddle);
        for (const QEvent::Type missed : {QEvent::StyleChange, QEvent::FontChange}) {
            QEvent event(missed);
            QComboBox::changeEvent(&event);
        }
    }
    QComboBox::showPopup();
}

// A combo box would make its list in order to tell it.
void ElidingComboBox::changeEvent(QEvent *event)
{
    const bool isForList =
        event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange;
    if (isForList && !m_hasList) {
        QWidget::changeEvent(event); // NOLINT(bugprone-parent-virtual-call)
        updateGeometry();
        QResizeEvent same(size(), size()); // which gives the field of an editable box its place
        resizeEvent(&same);
    } else {
        QComboBox::changeEvent(event);
    }
}

// A combo box would make its list in order to ask it whether it draws the box.
void ElidingComboBox::paintEvent(QPaintEvent * /*event*/)
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void ElidingComboBox::initStyleOption(QStyleOptionComboBox *option) const
{
    QComboBox::initStyleOption(option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, option, QStyle::SC_ComboBoxEditField, this);
    option->currentText =
        fontMetrics().elidedText(option->currentText, Qt::ElideMiddle, field.width());
}

} // namespace tallyforge
