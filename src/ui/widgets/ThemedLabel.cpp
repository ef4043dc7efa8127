// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/ThemedLabel.h"

#include <QColor>
#include <QEvent>
#include <QFont>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr qreal hintScale = 0.92;

// "palette(placeholder-text)" would be this colour, but of the application's palette, which OBS's
// themes leave as it is: black on black in a dark one.
QString quietColour(const QWidget *surroundings)
{
    constexpr qreal strength = 0.65;
    const QColor text = surroundings->palette().color(QPalette::Active, QPalette::WindowText);
    return u"color: rgba(%1, %2, %3, %4);"_s.arg(text.red())
        .arg(text.green())
        .arg(text.blue())
        .arg(strength);
}

} // namespace

ThemedLabel::ThemedLabel(const QString &text, Tone tone, qreal scale)
    : QLabel(text)
    , m_tone(tone)
    , m_scale(scale)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMinimumWidth(1);
}

void ThemedLabel::setTone(Tone tone)
{
    m_tone = tone;
    adapt();
}

void ThemedLabel::showText(const QString &text)
{
    setText(text);
    setVisible(!text.isEmpty());
}

bool ThemedLabel::event(QEvent *event)
{
    const bool done = QLabel::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange) {
        adapt();
    }
    return done;
}

// By a style sheet, since a theme's goes before the label's own font and palette. Setting one costs
// a polish, which comes back here.
void ThemedLabel::adapt()
{
    const QWidget *surroundings = parentWidget();
    if (!surroundings) {
        return;
    }
    QString sheet;
    if (m_tone == Tone::Error) {
        sheet = u"color: #d9534f;"_s;
    } else if (m_tone == Tone::Quiet) {
        sheet = quietColour(surroundings);
    }
    const qreal size = surroundings->font().pointSizeF();
    if (m_scale != 1 && size > 0) {
        sheet += u" font-size: %1pt;"_s.arg(size * m_scale);
    }
    if (styleSheet() != sheet) {
        setStyleSheet(sheet);
    }
}

ThemedLabel *hint(const QString &text)
{
    auto *label = new ThemedLabel(text, ThemedLabel::Tone::Quiet, hintScale);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void makeBold(QLabel *label)
{
    QFont font = label->font();
    font.setWeight(QFont::Bold);
    label->setFont(font);
}

} // namespace tallyforge
