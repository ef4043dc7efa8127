// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QWheelEvent>
#include <QWidget>

namespace tallyforge {

/// An input on a page that is scrolled: the wheel scrolls the page over it, and never changes the
/// input's value in passing. It takes the focus by mouse and keyboard alone.
template <class Input> class PassingWheel : public Input
{
public:
    explicit PassingWheel(QWidget *parent)
        : Input(parent)
    {
        this->setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace tallyforge
