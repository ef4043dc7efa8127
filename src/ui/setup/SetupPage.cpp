// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/SetupPage.h"

#include "ui/widgets/PageBuilders.h"
#include "ui/widgets/ScrolledColumn.h"
#include "ui/widgets/TextField.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

bool canTakeFocus(const QWidget *widget, const QWidget *page)
{
    return (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget->isEnabled() &&
           widget->isVisibleTo(page);
}

} // namespace

SetupPage::SetupPage(Content content, QWidget *parent)
    : QWidget(parent)
    , m_column(content == Content::IsScrolled ? scrolledColumn(this) : new QVBoxLayout(this))
{
}

ThemedLabel *SetupPage::addTitle(const QString &text, QBoxLayout *to)
{
    QBoxLayout *const place = to == nullptr ? m_column : to;
    auto *title =
        new ThemedLabel(place->parentWidget(), ThemedLabel::Tone::Normal, ThemedLabel::Size::Title);
    title->setTextFormat(Qt::RichText);
    title->setTextInteractionFlags(Qt::TextSelectableByMouse);
    setTitleText(title, text);
    place->addWidget(title);
    return title;
}

ThemedLabel *SetupPage::addText(const QString &name, const QString &text, QBoxLayout *to)
{
    return tallyforge::addText(to == nullptr ? m_column : to, name, text);
}

QPushButton *SetupPage::addButton(const QString &name, const QString &text, QBoxLayout *to)
{
    return tallyforge::addButton(to == nullptr ? m_column : to, name, text);
}

TextField *SetupPage::addField(const QString &name, const QString &placeholder, QBoxLayout *to)
{
    return tallyforge::addField(to == nullptr ? m_column : to, name, placeholder);
}

void SetupPage::enter()
{
    if (m_returnButton) {
        m_returnButton->setDefault(true);
    }
    if (m_first && canTakeFocus(m_first, content())) {
        m_first->setFocus();
        return;
    }
    for (QWidget *next = content()->nextInFocusChain(); content()->isAncestorOf(next);
         next = next->nextInFocusChain()) {
        if (canTakeFocus(next, content())) {
            next->setFocus();
            return;
        }
    }
}

// A dialog has one default button at a time, those of its hidden pages included.
void SetupPage::setReturnButton(QPushButton *button)
{
    if (m_returnButton) {
        m_returnButton->setDefault(false);
    }
    m_returnButton = button;
    if (button != nullptr && isVisible()) {
        button->setDefault(true);
    }
}

void setTitleText(QLabel *title, const QString &text)
{
    title->setText(u"<b>"_s + text.toHtmlEscaped() + u"</b>"_s);
}

} // namespace tallyforge
