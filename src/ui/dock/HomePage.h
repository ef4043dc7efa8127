// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QTimer>
#include <QWidget>

namespace tallyforge {

class App;
class DevicesGroup;
class ScoreboardGroup;
class ServerGroup;
class SignedInRow;
class SignInForm;
class UpdateBanner;
class UpdateFooter;

/// The dock's one page: groups that show the services' state and pass the user's wishes on. It has
/// no data of its own, so it may be made at any time.
class HomePage final : public QWidget
{
    Q_OBJECT

public:
    /// app isn't owned and must outlive the page. textTemplate is what a new text source shows. The
    /// dialogs become children of dialogParent.
    HomePage(App &app, const char *textTemplate, QWidget *dialogParent, QWidget *parent);

private:
    void addGroups(const char *textTemplate, QWidget *dialogParent);
    void connectServices();
    void refreshAll();
    void refreshUpdate();
    void openDownloadPage() const;

    App &m_app;
    UpdateBanner *m_banner = nullptr;
    SignInForm *m_signIn = nullptr;
    SignedInRow *m_signedIn = nullptr;
    ScoreboardGroup *m_scoreboard = nullptr;
    DevicesGroup *m_devices = nullptr;
    ServerGroup *m_server = nullptr;
    UpdateFooter *m_footer = nullptr;
    QTimer m_relayTimer;
};

} // namespace tallyforge
