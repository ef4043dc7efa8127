// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/SignInPage.h"

#include "device/DevicePassword.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/TextField.h"

#include <QProgressBar>

using namespace Qt::StringLiterals;

namespace tallyforge {

SignInPage::SignInPage(QWidget *parent)
    : SetupPage(Content::IsScrolled, parent)
{
    m_title = addTitle(tr("Connecting…"));
    m_title->setObjectName(u"tallyforgeSetupTitle"_s);
    m_message = new MessageLine(content());
    m_message->setObjectName(u"tallyforgeSetupMessage"_s);
    column()->addWidget(m_message);
    m_busy = new QProgressBar(content());
    m_busy->setObjectName(u"tallyforgeSetupBusy"_s);
    m_busy->setAccessibleName(tr("Connecting…"));
    m_busy->setRange(0, 0);
    m_busy->setTextVisible(false);
    column()->addWidget(m_busy);
    addPasswordPanel();
    addNewPasswordPanel();
    column()->addStretch();
    m_cancel = addButton(u"tallyforgeCancel"_s, tr("Cancel"));
    connect(m_cancel, &QPushButton::clicked, this, &SignInPage::cancelled);
    leaveOnlyTheWayBack(false);
}

// A password field stands below a text in each.
QWidget *SignInPage::addPanel(const QString &text)
{
    auto *panel = new QWidget(content());
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins({});
    auto *label = new ThemedLabel(panel);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setText(text);
    column->addWidget(label);
    this->column()->addWidget(panel);
    panel->hide();
    return panel;
}

void SignInPage::addPasswordPanel()
{
    m_passwordPanel =
        addPanel(tr("Enter this device's admin password. The factory password did not work."));
    auto *to = qobject_cast<QBoxLayout *>(m_passwordPanel->layout());
    m_password = addField(u"tallyforgeAdminPassword"_s, tr("Device admin password"), to);
    m_password->setEchoMode(QLineEdit::Password);
    m_signIn = addButton(u"tallyforgeSignInToDevice"_s, tr("Sign in to device"), to);
    connect(m_signIn, &QPushButton::clicked, this, &SignInPage::onSignIn);
}

void SignInPage::addNewPasswordPanel()
{
    m_newPasswordPanel = addPanel(tr("This device still has its factory password. Choose a new "
                                     "admin password (at least 8 characters)."));
    auto *to = qobject_cast<QBoxLayout *>(m_newPasswordPanel->layout());
    m_newPassword = addField(u"tallyforgeNewPassword"_s, tr("New admin password"), to);
    m_repeated = addField(u"tallyforgeRepeatedPassword"_s, tr("Type it again"), to);
    for (QLineEdit *edit : {m_newPassword, m_repeated}) {
        edit->setEchoMode(QLineEdit::Password);
    }
    m_setPassword = addButton(u"tallyforgeSetPassword"_s, tr("Set password"), to);
    connect(m_setPassword, &QPushButton::clicked, this, &SignInPage::onSetPassword);
}

void SignInPage::begin(const QString &title, const QString &message)
{
    for (QLineEdit *edit : {m_password, m_newPassword, m_repeated}) {
        edit->clear();
    }
    setTitleText(m_title, title);
    showProgress(message);
    setBusy(true);
}

void SignInPage::setBusy(bool busy)
{
    m_busy->setVisible(busy);
}

void SignInPage::askForPassword()
{
    setBusy(false);
    hidePanels();
    setTitleText(m_title, tr("Device password needed"));
    m_message->tell({}, false);
    m_passwordPanel->show();
    m_cancel->setAutoDefault(true);
    setFirstField(m_password);
    setReturnButton(m_signIn);
    m_password->setFocus();
}

void SignInPage::askForNewPassword()
{
    setBusy(false);
    hidePanels();
    setTitleText(m_title, tr("Choose a new device password"));
    m_message->tell({}, false);
    m_newPasswordPanel->show();
    m_cancel->setAutoDefault(true);
    setFirstField(m_newPassword);
    setReturnButton(m_setPassword);
    m_newPassword->setFocus();
}

void SignInPage::showProgress(const QString &message)
{
    hidePanels();
    leaveOnlyTheWayBack(false);
    m_message->tell(message, false);
}

void SignInPage::refuseNewPassword(const QString &message)
{
    m_newPasswordPanel->show();
    m_cancel->setAutoDefault(true);
    setReturnButton(m_setPassword);
    m_message->tell(message, true);
    m_newPassword->setFocus();
}

void SignInPage::fail(const QString &title, const QString &message)
{
    setBusy(false);
    hidePanels();
    setTitleText(m_title, title);
    m_message->tell(message, true);
    leaveOnlyTheWayBack(true);
    m_cancel->setFocus();
}

QString SignInPage::password() const
{
    return m_password->text();
}

void SignInPage::setPassword(const QString &password)
{
    m_password->setText(password);
}

void SignInPage::onSignIn()
{
    if (const QString password = m_password->text(); !password.isEmpty()) {
        Q_EMIT passwordEntered(password);
    }
}

void SignInPage::onSetPassword()
{
    const QString password = m_newPassword->text();
    if (!isGoodPassword(password)) {
        refuseNewPassword(tr("Use at least 8 characters, and not the factory password."));
    } else if (password != m_repeated->text()) {
        refuseNewPassword(tr("The two passwords do not match."));
    } else {
        Q_EMIT newPasswordChosen(password);
    }
}

void SignInPage::hidePanels()
{
    m_passwordPanel->hide();
    m_newPasswordPanel->hide();
}

// While something is under way, Return must not press Cancel: it may be the same stroke, or the
// second of two, that has pressed the button before.
void SignInPage::leaveOnlyTheWayBack(bool only)
{
    setFirstField(m_cancel);
    m_cancel->setAutoDefault(only);
    setReturnButton(only ? m_cancel : nullptr);
}

} // namespace tallyforge
