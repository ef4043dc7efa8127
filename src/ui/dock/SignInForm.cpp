// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/SignInForm.h"

#include "portal/PortalClient.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QDesktopServices>
#include <QLineEdit>
#include <QPointer>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int longestCode = 12;

// A placeholder alone isn't read out by every screen reader.
QLineEdit *field(const QString &name, const QString &placeholder, QWidget *parent)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setPlaceholderText(placeholder);
    edit->setAccessibleName(placeholder);
    return edit;
}

} // namespace

SignInForm::SignInForm(PortalClient &portal, QWidget *parent)
    : Group(tr("Tallyforge account (optional)"), parent)
    , m_portal(portal)
{
    setObjectName(u"tallyforgeSignIn"_s);
    column()->addWidget(hint(tr("Sign in to see your account's devices and graphics. Not needed to "
                                "set up or manage a device, or to show scores from one connected "
                                "to this computer."),
                             this));
    addFields();

    m_button = new WrappingButton(tr("Sign in"), this);
    m_button->setObjectName(u"tallyforgeSignInButton"_s);
    m_button->setDefault(true);
    column()->addWidget(m_button);
    connect(m_button, &QPushButton::clicked, this, &SignInForm::doSignIn);

    m_message = new ThemedLabel(this);
    m_message->setObjectName(u"tallyforgeSignInMessage"_s);
    column()->addWidget(m_message);
    m_message->showText({});
    addLinks();
}

void SignInForm::addFields()
{
    m_email = field(u"tallyforgeEmail"_s, tr("Email"), this);
    m_password = field(u"tallyforgePassword"_s, tr("Password"), this);
    m_password->setEchoMode(QLineEdit::Password);
    m_code = field(u"tallyforgeCode"_s, tr("6-digit code from your authenticator app"), this);
    m_code->setMaxLength(longestCode);
    m_code->hide();
    for (QLineEdit *edit : {m_email, m_password, m_code}) {
        column()->addWidget(edit);
    }
    for (const QLineEdit *edit : {m_password, m_code}) {
        connect(edit, &QLineEdit::returnPressed, this, &SignInForm::doSignIn);
    }
    for (const QLineEdit *edit : {m_email, m_password}) {
        connect(edit, &QLineEdit::textEdited, this, &SignInForm::startOver);
    }
}

void SignInForm::addLinks()
{
    auto *links =
        new QLabel(u"<a href=\"signup\">%1</a> &nbsp;·&nbsp; <a href=\"reset\">%2</a>"_s.arg(
                       tr("Create an account"), tr("Forgot password?")),
                   this);
    links->setObjectName(u"tallyforgeAccountLinks"_s);
    links->setWordWrap(true);
    links->setMinimumWidth(1);
    links->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    column()->addWidget(links);
    connect(links, &QLabel::linkActivated, this, &SignInForm::openLink);
}

void SignInForm::doSignIn()
{
    if (!m_button->isEnabled()) {
        return; // Return pressed while a request is out
    }
    m_message->setError(false);
    m_button->setEnabled(false);
    const auto answer = [self = QPointer(this)](const PortalResult &result) {
        if (self) {
            self->onAnswer(result);
        }
    };
    if (!m_challengeId.isEmpty() && !m_code->isHidden()) {
        m_portal.signInWithCode(m_challengeId, m_code->text(), answer);
    } else {
        m_portal.signIn(m_email->text(), m_password->text(), answer);
    }
}

void SignInForm::onAnswer(const PortalResult &result)
{
    m_button->setEnabled(true);
    if (!result.ok) {
        m_message->setError(true);
        m_message->showText(result.message);
    } else if (result.data.value("totp_required"_L1).toBool()) {
        askForCode(result.data.value("challenge_id"_L1).toString());
    } else {
        m_password->clear();
        endSecondStep();
    }
}

void SignInForm::askForCode(const QString &challengeId)
{
    m_challengeId = challengeId;
    m_code->show();
    m_code->setFocus();
    m_message->showText(tr("Enter the code from your authenticator app."));
}

// A change of email or password in the second step is no answer to its question any more.
void SignInForm::startOver()
{
    if (!m_code->isHidden()) {
        endSecondStep();
    }
}

void SignInForm::endSecondStep()
{
    m_code->clear();
    m_code->hide();
    m_challengeId.clear();
    m_message->showText({});
}

void SignInForm::openLink(const QString &link) const
{
    const QString page = link == "signup"_L1 ? u"/signup.html"_s : u"/reset.html"_s;
    QDesktopServices::openUrl(QUrl(m_portal.baseUrl() + page));
}

} // namespace tallyforge
