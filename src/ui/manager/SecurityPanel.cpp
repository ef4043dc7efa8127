// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/SecurityPanel.h"

#include "device/DevicePassword.h"
#include "ui/widgets/Group.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/PageBuilders.h"
#include "ui/widgets/ScrolledColumn.h"
#include "ui/widgets/TextField.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int answerMs = 20000;

TextField *addReadOnly(QBoxLayout *to, const QString &name, const QString &placeholder)
{
    TextField *field = addField(to, name, placeholder);
    field->setReadOnly(true);
    return field;
}

} // namespace

SecurityPanel::SecurityPanel(DeviceSession *session, QWidget *parent)
    : PanelBase(session, parent)
{
    setObjectName(u"tallyforgeSecurity"_s);
    QVBoxLayout *column = scrolledColumn(this);
    addNetwork(column);
    addBluetooth(column);
    addPassword(column);
    column->addWidget(messageLine());
    column->addStretch();
}

void SecurityPanel::addNetwork(QBoxLayout *column)
{
    auto *group = new Group(tr("Network access"), column->parentWidget());
    column->addWidget(group);
    QVBoxLayout *rows = group->column();
    addText(rows, u"tallyforgeTokenHint"_s,
            tr("Other programs can read this device's live scores over the network with an access "
               "token."));
    addText(rows, u"tallyforgeFingerprintLabel"_s, tr("Security fingerprint"));
    m_fingerprint =
        addReadOnly(rows, u"tallyforgeFingerprint"_s, tr("Security fingerprint (SHA-256)"));
    addText(rows, u"tallyforgeTokenLabel"_s, tr("Access token"));
    m_token = addReadOnly(rows, u"tallyforgeToken"_s, tr("Access token"));
    auto *buttons = new QHBoxLayout;
    rows->addLayout(buttons);
    const QPushButton *make =
        addButton(buttons, u"tallyforgeNewToken"_s, tr("Make a new access token"));
    const QPushButton *copy = addButton(buttons, u"tallyforgeCopyToken"_s, tr("Copy token"));
    connect(make, &QPushButton::clicked, this, &SecurityPanel::makeToken);
    connect(copy, &QPushButton::clicked, this, &SecurityPanel::copyToken);
}

void SecurityPanel::addBluetooth(QBoxLayout *column)
{
    auto *group = new Group(tr("Bluetooth pairing"), column->parentWidget());
    column->addWidget(group);
    addText(group->column(), u"tallyforgePasskeyHint"_s,
            tr("The passkey this computer or phone enters the first time it pairs over Bluetooth. "
               "It is only shown over a cable or the network."));
    m_passkey = addReadOnly(group->column(), u"tallyforgePasskey"_s, tr("6-digit passkey"));
    const QPushButton *show =
        addButton(group->column(), u"tallyforgeShowPasskey"_s, tr("Show pairing passkey"));
    connect(show, &QPushButton::clicked, this, &SecurityPanel::showPasskey);
}

void SecurityPanel::addPassword(QBoxLayout *column)
{
    auto *group = new Group(tr("Admin password"), column->parentWidget());
    column->addWidget(group);
    QVBoxLayout *rows = group->column();
    m_current = addField(rows, u"tallyforgeCurrentPassword"_s, tr("Current password"));
    m_next =
        addField(rows, u"tallyforgeNextPassword"_s, tr("New password (at least 8 characters)"));
    m_repeated = addField(rows, u"tallyforgeNextPasswordAgain"_s, tr("New password again"));
    m_change = addButton(rows, u"tallyforgeChangePassword"_s, tr("Change password"));
    for (TextField *field : {m_current, m_next, m_repeated}) {
        field->setEchoMode(QLineEdit::Password);
        pressOnReturn(field, m_change);
    }
    connect(m_change, &QPushButton::clicked, this, &SecurityPanel::changePassword);
}

void SecurityPanel::refresh()
{
    call(
        u"getStatus"_s, {},
        [this](const RpcResult &result) {
            if (!result.ok) {
                return;
            }
            const QString fingerprint = result.result.value("tls_fingerprint"_L1).toString();
            m_fingerprint->setText(fingerprint);
            m_fingerprint->setCursorPosition(0); // where it is read from
            // The device tells nobody a token that it has made before.
            if (m_token->text().isEmpty() &&
                result.result.value("api_token_configured"_L1).toBool()) {
                m_token->setPlaceholderText(tr("Set – make a new token to see one"));
            }
        },
        answerMs);
}

void SecurityPanel::makeToken()
{
    const auto onAnswer = [this](const RpcResult &result) {
        const QString token = result.result.value("token"_L1).toString();
        if (!result.ok) {
            tell(result.errorMessage, true);
        } else if (token.isEmpty()) {
            tell(tr("The device did not return a token."), true);
        } else {
            m_token->setText(token);
            tell(tr("Copy the token now – it is not shown again."), false);
            Q_EMIT apiToken(token);
        }
    };
    confirm(tr("New access token"),
            tr("Make a new access token? Anything using the old one will stop working until you "
               "update it."),
            [this, onAnswer] {
                call(u"ensureApiToken"_s, {{u"force_new"_s, true}}, onAnswer, answerMs);
            });
}

void SecurityPanel::copyToken()
{
    if (!m_token->text().isEmpty()) {
        QGuiApplication::clipboard()->setText(m_token->text());
    }
}

void SecurityPanel::showPasskey()
{
    call(
        u"blePasskey"_s, {},
        [this](const RpcResult &result) {
            const QString passkey = result.result.value("passkey"_L1).toString();
            if (!result.ok) {
                tell(result.errorMessage, true);
            } else if (passkey.isEmpty()) {
                tell(tr("The device did not return a passkey."), true);
            } else {
                m_passkey->setText(passkey);
                tell({}, false);
            }
        },
        answerMs);
}

void SecurityPanel::changePassword()
{
    const QString current = m_current->text();
    const QString next = m_next->text();
    if (current.isEmpty() || next.isEmpty()) {
        tell(tr("Fill in the current and new password."), true);
        return;
    }
    if (next != m_repeated->text()) {
        tell(tr("The two new passwords do not match."), true);
        return;
    }
    if (!isGoodPassword(next)) {
        tell(tr("Use at least 8 characters, and not the factory password."), true);
        return;
    }
    m_change->setEnabled(!session()); // without a session there is no answer
    call(
        u"changePassword"_s,
        {{u"current_password"_s, current},
         {u"new_password"_s, next},
         {u"confirm_password"_s, m_repeated->text()}},
        [this, next](const RpcResult &result) {
            m_change->setEnabled(true);
            if (!result.ok) {
                tell(result.errorMessage, true);
                return;
            }
            for (TextField *field : {m_current, m_next, m_repeated}) {
                field->clear();
            }
            tell(tr("Password changed."), false);
            Q_EMIT passwordChanged(next);
        },
        answerMs);
}

} // namespace tallyforge
