// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/Hint.h"

#include <QFont>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr const char *kindProperty = "tallyforgeText";
constexpr qreal hintScale = 0.92;
constexpr qreal prominentScale = 1.25;

void scale(QLabel *label, const QString &kind, qreal factor)
{
    label->setProperty(kindProperty, kind);
    QFont font = label->font();
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * factor);
        label->setFont(font);
    }
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

} // namespace

QLabel *wrappedLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(1);
    return label;
}

QLabel *hint(const QString &text)
{
    QLabel *label = wrappedLabel(text);
    scale(label, u"hint"_s, hintScale);
    label->setStyleSheet(hintStyle());
    return label;
}

void makeProminent(QLabel *label)
{
    scale(label, u"prominent"_s, prominentScale);
    QFont font = label->font();
    font.setWeight(QFont::Bold);
    label->setFont(font);
}

QString textSizeRules(qreal pointSize)
{
    const QString rule = u"QLabel[%1=\"%2\"] { font-size: %3pt; }\n"_s;
    const QString property = QString::fromLatin1(kindProperty);
    return rule.arg(property, u"hint"_s).arg(pointSize * hintScale) +
           rule.arg(property, u"prominent"_s).arg(pointSize * prominentScale);
}

QString errorStyle()
{
    return u"color: #d9534f;"_s;
}

QString hintStyle()
{
    return u"color: palette(placeholder-text);"_s;
}

void restyle(QWidget *widget, const QString &styleSheet)
{
    if (widget->styleSheet() != styleSheet) {
        widget->setStyleSheet(styleSheet);
    }
}

} // namespace tallyforge
