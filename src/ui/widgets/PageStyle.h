// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QObject>

class QWidget;

namespace tallyforge {

/// Gives a page or dialog the style sheet that its ThemedLabels need, and keeps it in tune with
/// OBS's theme: their sizes are shares of the page's own, and quiet text is a shade of the page's
/// colour. A child of the page, to be made before everything else on it. The page can have no other
/// style sheet.
///
/// How a page stays cheap under OBS's themes, which are one style sheet of 2,500 lines:
/// - A widget is made as a child of what it will stand in. Each change of parents styles the widget
///   and everything below it anew, so a page that is put together from the inside out is styled as
///   often as it is deep.
/// - One style sheet for the page instead of one for each label. A label with a style sheet of its
///   own is styled twice at the least, and again at each change of parents.
/// - A page is made when it is shown for the first time, because most pages are never seen in a
/// run.
///   A large one is made, measured and placed in turns of the event loop of their own.
/// - A label or button is asked for its size when all of its page stands, not before: each such
///   question styles the widget.
/// - Text and style sheet are set only where they change: Qt lays out and draws the same ones
/// again.
class PageStyle final : public QObject
{
    Q_OBJECT

public:
    explicit PageStyle(QWidget *page);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void adapt();

    QWidget *const m_page;
};

} // namespace tallyforge
