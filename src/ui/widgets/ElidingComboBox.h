// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/PassingWheel.h"

#include <QComboBox>

namespace tallyforge {

/// A combo box that never grows with its items: names that don't fit lose their middle. Its list,
/// which takes four times as long to make as the box, is made when the user first opens it. A box
/// in which the user can type gets its field by setLineEdit(), because setEditable() makes the
/// list.
class ElidingComboBox final : public PassingWheel<QComboBox>
{
    Q_OBJECT

public:
    explicit ElidingComboBox(QWidget *parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    void showPopup() override;

protected:
    void changeEvent(QEvent *event) override;
    void initStyleOption(QStyleOptionComboBox *option) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_hasList = false;
};

} // namespace tallyforge
