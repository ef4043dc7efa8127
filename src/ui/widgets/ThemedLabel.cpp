// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/ThemedLabel.h"

#include <QEvent>
#include <QFont>

using namespace Qt::StringLiterals;

namespace tallyforge {

ThemedLabel::ThemedLabel(QWidget *parent, Tone tone, Size size)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMinimumWidth(1);
    if (tone != Tone::Normal || size != Size::Normal) {
        setProperty("class", QString(className(tone) + u' ' + className(size)).trimmed());
    }
}

void ThemedLabel::showText(const QString &text)
{
    setText(text);
    setVisible(!text.isEmpty());
}

// Errors are rare, so that this may cost a style sheet of the label's own.
void ThemedLabel::setError(bool isError)
{
    const QString sheet = isError ? u"color: #d9534f;"_s : QString();
    if (styleSheet() != sheet) {
        setStyleSheet(sheet);
    }
}

bool ThemedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        m_heights.clear();
    }
    return QLabel::event(event);
}

int ThemedLabel::heightForWidth(int width) const
{
    if (m_measured != text()) {
        m_measured = text();
        m_heights.clear();
    }
    auto known = m_heights.find(width);
    if (known == m_heights.end()) {
        known = m_heights.insert(width, QLabel::heightForWidth(width));
    }
    return *known;
}

QLatin1StringView ThemedLabel::className(Tone tone)
{
    return tone == Tone::Quiet ? "tallyforgeQuiet"_L1 : QLatin1StringView();
}

QLatin1StringView ThemedLabel::className(Size size)
{
    switch (size) {
    case Size::Small:
        return "tallyforgeSmall"_L1;
    case Size::Title:
        return "tallyforgeTitle"_L1;
    case Size::Large:
        return "tallyforgeLarge"_L1;
    default:
        return {};
    }
}

ThemedLabel *hint(const QString &text, QWidget *parent)
{
    auto *label = new ThemedLabel(parent, ThemedLabel::Tone::Quiet, ThemedLabel::Size::Small);
    label->setText(text);
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
