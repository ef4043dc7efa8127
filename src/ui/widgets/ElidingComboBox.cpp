// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/ElidingComboBox.h"

#include <QAbstractItemView>
#include <QStyleOptionComboBox>

namespace tallyforge {

ElidingComboBox::ElidingComboBox(QWidget *parent)
    : PassingWheel(parent)
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

} // namespace tallyforge
