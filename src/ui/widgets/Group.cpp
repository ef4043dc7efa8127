// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/Group.h"

#include <QStyleOptionGroupBox>
#include <QVBoxLayout>

#include <utility>

namespace tallyforge {

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
    const int box = isCheckable()
                        ? style()->pixelMetric(QStyle::PM_IndicatorWidth, option, this) +
                              style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, option, this)
                        : 0;
    option->text = elided(width() - margins - box);
}

QString Group::elided(int width) const
{
    std::tuple wanted(title(), font(), width);
    if (m_elidedFor != wanted) {
        m_elided = fontMetrics().elidedText(title(), Qt::ElideRight, width);
        m_elidedFor = std::move(wanted);
    }
    return m_elided;
}

} // namespace tallyforge
