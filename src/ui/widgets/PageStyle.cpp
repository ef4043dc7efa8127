// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/PageStyle.h"

#include "ui/widgets/ThemedLabel.h"

#include <QColor>
#include <QEvent>
#include <QPalette>
#include <QWidget>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

// "palette(placeholder-text)" would be this colour, but of the application's palette, which OBS's
// themes leave as it is: black on black in a dark one.
QString quietRule(const QPalette &palette)
{
    constexpr qreal strength = 0.65;
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    return u".%1 { color: rgba(%2, %3, %4, %5); }"_s
        .arg(ThemedLabel::className(ThemedLabel::Tone::Quiet))
        .arg(text.red())
        .arg(text.green())
        .arg(text.blue())
        .arg(strength);
}

QString sizeRules(qreal points)
{
    using Size = ThemedLabel::Size;
    constexpr std::array<std::pair<Size, qreal>, 3> scales{
        {{Size::Small, 0.92}, {Size::Title, 1.15}, {Size::Large, 1.25}}};
    QString rules;
    for (const auto &[size, scale] : scales) {
        rules +=
            u" .%1 { font-size: %2pt; }"_s.arg(ThemedLabel::className(size)).arg(points * scale);
    }
    return rules;
}

} // namespace

PageStyle::PageStyle(QWidget *page)
    : QObject(page)
    , m_page(page)
{
    page->ensurePolished(); // only then it has the theme's font and colours
    adapt();
    page->installEventFilter(this);
}

bool PageStyle::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_page &&
        (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange)) {
        adapt();
    }
    return QObject::eventFilter(watched, event);
}

// Setting a style sheet brings a StyleChange of its own, which comes back here.
void PageStyle::adapt()
{
    QString sheet = quietRule(m_page->palette());
    if (const qreal points = m_page->font().pointSizeF(); points > 0) {
        sheet += sizeRules(points);
    }
    if (m_page->styleSheet() != sheet) {
        m_page->setStyleSheet(sheet);
    }
}

} // namespace tallyforge
