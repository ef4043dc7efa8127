// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/Group.h"

class QLineEdit;
class QPushButton;

namespace tallyforge {

class PortalClient;
class ThemedLabel;
struct PortalResult;

/// Signs in to the account: with email and password, and where the account asks for it, with a code
/// as a second step. One request at a time.
class SignInForm final : public Group
{
    Q_OBJECT

public:
    /// portal isn't owned and must outlive the form.
    explicit SignInForm(PortalClient &portal, QWidget *parent);

private:
    void addFields();
    void addLinks();
    void doSignIn();
    void onAnswer(const PortalResult &result);
    void askForCode(const QString &challengeId);
    void startOver();
    void endSecondStep();
    void openLink(const QString &link) const;

    PortalClient &m_portal;
    QLineEdit *m_email = nullptr;
    QLineEdit *m_password = nullptr;
    QLineEdit *m_code = nullptr;
    QPushButton *m_button = nullptr;
    ThemedLabel *m_message = nullptr;
    QString m_challengeId; // of the second step that is under way
};

} // namespace tallyforge
