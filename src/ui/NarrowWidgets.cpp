// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/NarrowWidgets.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QTextLayout>
#include <QWheelEvent>

#include <algorithm>

namespace tallyforge {

QString wrapText(const QString &text, const QFont &font, int width)
{
    if (QFontMetrics(font).size(Qt::TextShowMnemonic, text).width() <= width) {
        return text;
    }
    QStringList lines;
    QTextLayout layout(text, font);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1));
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines.join(u'\n');
}

int widestWord(const QString &text, const QFont &font)
{
    const QFontMetrics metrics(font);
    int widest = 0;
    const QList<QStringView> words = QStringView(text).split(u' ');
    for (const QStringView word : words) {
        widest = std::max(widest, metrics.size(Qt::TextShowMnemonic, word.toString()).width());
    }
    return widest;
}

ElidingComboBox::ElidingComboBox(QWidget *parent)
    : QComboBox(parent)
{
    constexpr int leastCharacters = 8;
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(leastCharacters);
    view()->setTextElideMode(Qt::ElideMiddle);
}

void ElidingComboBox::initStyleOption(QStyleOptionComboBox *option) const
{
    QComboBox::initStyleOption(option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, option, QStyle::SC_ComboBoxEditField, this);
    option->currentText =
        fontMetrics().elidedText(option->currentText, Qt::ElideMiddle, field.width());
}

void ElidingComboBox::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

Group::Group(const QString &title, QWidget *parent)
    : QGroupBox(title, parent)
    , m_column(new QVBoxLayout(this))
{
    constexpr QMargins margins{8, 2, 8, 4}; // pixels, beside what a theme leaves around the title
    m_column->setContentsMargins(margins);
}

QSize Group::minimumSizeHint() const
{
    return m_column->totalMinimumSize(); // of the content alone
}

void Group::initStyleOption(QStyleOptionGroupBox *option) const
{
    constexpr int margins = 8; // pixels, on both sides together
    QGroupBox::initStyleOption(option);
    option->text = fontMetrics().elidedText(title(), Qt::ElideRight, width() - margins);
}

} // namespace tallyforge
