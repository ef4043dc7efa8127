// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/PassingWheel.h"

#include <QComboBox>

namespace tallyforge {

/// A combo box that never grows with its items: names that don't fit lose their middle.
class ElidingComboBox final : public PassingWheel<QComboBox>
{
    Q_OBJECT

public:
    explicit ElidingComboBox(QWidget *parent);

protected:
    void initStyleOption(QStyleOptionComboBox *option) const override;
};

} // namespace tallyforge
