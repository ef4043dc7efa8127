// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/WrappedText.h"

#include <QCheckBox>
#include <QEvent>
#include <QPointer>
#include <QPushButton>
#include <QStyleOptionButton>

namespace tallyforge {

/// A button whose text is wrapped where it doesn't fit, so that it asks for no more width than its
/// longest word. The style draws it as it draws any other. When it is switched off under the focus,
/// it takes the focus back once it is on again, unless the user has moved it meanwhile.
template <class Button, QStyle::ContentsType contents> class Wrapping final : public Button
{
public:
    explicit Wrapping(const QString &text, QWidget *parent)
        : Button(text, parent)
    {
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
        policy.setHeightForWidth(true);
        this->setSizePolicy(policy);
    }

    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return {widestWord(this->text(), this->font()) + frameWidth(), this->sizeHint().height()};
    }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override
    {
        const auto breaks = int(wrapped(width).count(u'\n'));
        return this->sizeHint().height() + breaks * this->fontMetrics().lineSpacing();
    }

protected:
    bool event(QEvent *event) override
    {
        const bool done = Button::event(event);
        if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange) {
            this->setMaximumHeight(QWIDGETSIZE_MAX); // OBS's themes allow for one line
        }
        if (event->type() == QEvent::FocusOut && !this->isEnabled()) {
            m_focused = this->window()->focusWidget();
        } else if (event->type() == QEvent::EnabledChange && this->isEnabled() && m_focused) {
            if (m_focused == this->window()->focusWidget()) {
                this->setFocus();
            }
            m_focused.clear();
        }
        return done;
    }
    // Decides how much is drawn, and where a check box takes a click.
    void initStyleOption(QStyleOptionButton *option) const override
    {
        Button::initStyleOption(option);
        option->text = wrapped(this->width());
    }

private:
    [[nodiscard]] QString wrapped(int width) const
    {
        return wrapText(this->text(), this->font(), width - frameWidth());
    }
    // What the style takes at the sides; measured far above any least width of its own.
    [[nodiscard]] int frameWidth() const
    {
        constexpr QSize probe{1000, 1};
        QStyleOptionButton option;
        Button::initStyleOption(&option);
        return this->style()->sizeFromContents(contents, &option, probe, this).width() -
               probe.width();
    }

    QPointer<QWidget> m_focused; // in its place
};

using WrappingButton = Wrapping<QPushButton, QStyle::CT_PushButton>;
using WrappingCheckBox = Wrapping<QCheckBox, QStyle::CT_CheckBox>;

} // namespace tallyforge
