// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QVBoxLayout;
class QWidget;

namespace tallyforge {

/// Fills a widget, which has no layout yet, with a column that is scrolled where it doesn't fit.
/// What goes into the column is made as a child of the column's parentWidget().
[[nodiscard]] QVBoxLayout *scrolledColumn(QWidget *parent);

} // namespace tallyforge
