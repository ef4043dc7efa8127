// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <functional>

class QString;
class QWidget;

namespace tallyforge {

enum class Severity {
    Usual,  ///< a question with Yes and No
    Severe, ///< a warning with Yes and Cancel
};

/// Asks the user whether something is to be done, in a box that stands before parent's window while
/// OBS goes on. yes is called in the event loop's next turn if the user agrees and parent lives
/// until then. Return and Escape mean no.
void askToConfirm(QWidget *parent, const QString &title, const QString &text,
                  const std::function<void()> &yes, Severity severity = Severity::Usual);
/// Asks the user for a line of text in the same way; accepted is called with it, perhaps empty.
void askForText(QWidget *parent, const QString &title, const QString &label,
                const std::function<void(const QString &text)> &accepted);

} // namespace tallyforge
