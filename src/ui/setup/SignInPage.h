// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/setup/SetupPage.h"

class QLabel;
class QProgressBar;

namespace tallyforge {

class MessageLine;

/// Shows how the connection to a device comes about, and asks for the device's password or a new
/// one for it.
class SignInPage final : public SetupPage
{
    Q_OBJECT

public:
    explicit SignInPage(QWidget *parent);

    /// A new connection: forgets the passwords and shows that something is under way.
    void begin(const QString &title, const QString &message);
    void setBusy(bool busy);
    void askForPassword();
    void askForNewPassword();
    /// A password is on its way to the device.
    void showProgress(const QString &message);
    /// The new password was refused: the user may change it.
    void refuseNewPassword(const QString &message);
    /// The end of the connection; only the way back is left.
    void fail(const QString &title, const QString &message);

    /// What stands in the field for the device's password.
    [[nodiscard]] QString password() const;
    void setPassword(const QString &password);

Q_SIGNALS:
    void passwordEntered(const QString &password);
    /// A new password that follows the rules.
    void newPasswordChosen(const QString &password);
    void cancelled();

private:
    QWidget *addPanel(const QString &text);
    void addPasswordPanel();
    void addNewPasswordPanel();
    void onSignIn();
    void onSetPassword();
    void hidePanels();
    void leaveOnlyTheWayBack(bool only);

    QLabel *m_title = nullptr;
    MessageLine *m_message = nullptr;
    QProgressBar *m_busy = nullptr;
    QWidget *m_passwordPanel = nullptr;
    TextField *m_password = nullptr;
    QPushButton *m_signIn = nullptr;
    QWidget *m_newPasswordPanel = nullptr;
    TextField *m_newPassword = nullptr;
    TextField *m_repeated = nullptr;
    QPushButton *m_setPassword = nullptr;
    QPushButton *m_cancel = nullptr;
};

} // namespace tallyforge
