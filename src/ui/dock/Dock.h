// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QWidget>

class QScrollArea;
class QStackedWidget;

namespace tallyforge {

class App;
class HomePage;

/// The plug-in's home in OBS's window. It is hidden in most runs, so its content, a HomePage, is
/// made soon after OBS has shown it for the first time.
class Dock final : public QWidget
{
    Q_OBJECT

public:
    /// app isn't owned and must outlive the dock. textTemplate, kept as it is, is what a new text
    /// source shows.
    Dock(App &app, const char *textTemplate);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void makePage();
    void measurePage();
    void placePage();

    App &m_app;
    const char *const m_textTemplate;
    // Null until the dock has been shown.
    QScrollArea *m_scrolled = nullptr;
    QWidget *m_page = nullptr; // scrolled by it
    QStackedWidget *m_pages = nullptr;
    HomePage *m_home = nullptr;
};

} // namespace tallyforge
