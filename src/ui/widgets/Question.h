// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <functional>

class QString;
class QWidget;

namespace tallyforge {

/// Asks the user whether something is to be done, in a box that stands before parent's window while
/// OBS goes on. yes is called if the user agrees and parent still lives. Return and Escape mean no.
void askToConfirm(QWidget *parent, const QString &title, const QString &text,
                  const std::function<void()> &yes);

} // namespace tallyforge
