// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QFont>
#include <QGroupBox>

#include <tuple>

class QVBoxLayout;

namespace tallyforge {

/// A group of the page, one widget below the other. A title that doesn't fit is elided.
class Group : public QGroupBox
{
    Q_OBJECT

public:
    explicit Group(const QString &title, QWidget *parent);

    [[nodiscard]] QVBoxLayout *column() const { return m_column; }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void initStyleOption(QStyleOptionGroupBox *option) const override;

private:
    [[nodiscard]] QString elided(int width) const;

    // The style asks twenty times for the same text while a page is made, also from within the
    // layout's constructor.
    mutable QString m_elided;
    mutable std::tuple<QString, QFont, int> m_elidedFor; // title, font, width
    QVBoxLayout *const m_column;                         // of the group
};

} // namespace tallyforge
