// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QDialog>
#include <QList>
#include <QPointer>

#include <functional>

class QBoxLayout;
class QPushButton;

namespace tallyforge {

class App;
class LogBox;
class MessageLine;
class ScoreboardForm;
struct PortalResult;

/// Acts on a device of the signed-in account through the cloud, so the device must be online. One
/// action at a time. Not modal; it deletes itself when it is closed, and an answer that comes later
/// has no effect.
class ManageDialog final : public QDialog
{
    Q_OBJECT

public:
    /// app isn't owned. It may end before the dialog does.
    ManageDialog(App &app, const QString &deviceId, QWidget *parent);

private:
    using Answer = std::function<void(const PortalResult &result)>;

    void addStatus(QBoxLayout *column);
    void addScoreboard(QBoxLayout *column);
    void addTools(QBoxLayout *column);
    QPushButton *addCommand(QBoxLayout *to, const QString &name, const QString &text,
                            void (ManageDialog::*action)());
    void setMessage(const QString &text, bool isError);
    void setBusy(bool busy);
    /// Shows that something is under way. The answer to be used shows that it has ended, and shows
    /// a failure; onSuccess gets the others.
    Answer begin(const QString &busyText, const Answer &onSuccess);
    void run(const QString &command, const QString &busyText, const Answer &onSuccess);
    void checkStatus();
    void changeScoreboard();
    void checkUpdate();
    void askToRestart();
    void restart();

    const QPointer<App> m_app;
    const QString m_deviceId;
    MessageLine *m_message = nullptr;
    LogBox *m_output = nullptr;
    ScoreboardForm *m_scoreboard = nullptr;
    QList<QPushButton *> m_actions;
};

} // namespace tallyforge
