// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

class QLabel;

namespace tallyforge {

class TextField;
class ThemedLabel;

/// A page of the setup dialog: one widget below the other. It shows what it is told and emits what
/// the user wants.
class SetupPage : public QWidget
{
    Q_OBJECT

public:
    /// To be called when the page has come into view: gives the focus to the field that wants
    /// something, and Return to the page's button.
    void enter();

protected:
    enum class Content {
        IsScrolled,    ///< where the dialog is too small for it
        ScrollsItself, ///< it is made of widgets that do so
    };

    SetupPage(Content content, QWidget *parent);

    /// What everything on the page is made as a child of.
    [[nodiscard]] QWidget *content() const { return m_column->parentWidget(); }
    [[nodiscard]] QVBoxLayout *column() const { return m_column; }
    /// These add to a layout, by default to the column. Each object gets its name for tests.
    ThemedLabel *addTitle(const QString &text, QBoxLayout *to = nullptr);
    ThemedLabel *addText(const QString &name, const QString &text = {}, QBoxLayout *to = nullptr);
    QPushButton *addButton(const QString &name, const QString &text, QBoxLayout *to = nullptr);
    TextField *addField(const QString &name, const QString &placeholder, QBoxLayout *to = nullptr);

    /// The field that wants something first; null for the first one on the page.
    void setFirstField(QWidget *field) { m_first = field; }
    /// The button that Return presses; null for none.
    void setReturnButton(QPushButton *button);

private:
    QVBoxLayout *const m_column;
    QPointer<QWidget> m_first;
    QPointer<QPushButton> m_returnButton;
};

/// Sets the text of a page's title.
void setTitleText(QLabel *title, const QString &text);

} // namespace tallyforge
