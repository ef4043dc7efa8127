// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QBoxLayout;
class QLineEdit;
class QPushButton;
class QString;

namespace tallyforge {

class ReadOnlyBox;
class TextField;
class ThemedLabel;

// What the pages are made of. Each function adds a new widget to a layout of a widget, with the
// name by which tests find it; the widget becomes a child of what the layout fills.

ThemedLabel *addHeading(QBoxLayout *to, const QString &text);
/// A text that the user can select with the mouse.
ThemedLabel *addText(QBoxLayout *to, const QString &name, const QString &text);
QPushButton *addButton(QBoxLayout *to, const QString &name, const QString &text);
TextField *addField(QBoxLayout *to, const QString &name, const QString &placeholder);
/// title is what a screen reader calls it; height is the least one, in pixels.
ReadOnlyBox *addReadOnlyBox(QBoxLayout *to, const QString &name, const QString &title, int height);

/// Has Return in a field press a button, whichever one is the default of the whole window. The
/// button must outlive the field, or go together with it.
void pressOnReturn(QLineEdit *field, QPushButton *button);

} // namespace tallyforge
