// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/SetupDialog.h"

#include "device/DeviceLink.h"
#include "device/DevicePassword.h"
#include "device/usb/UsbLink.h"
#include "plugin/App.h"
#include "ui/setup/ConnectPage.h"
#include "ui/setup/NetworkAccess.h"
#include "ui/setup/ReceiverPage.h"
#include "ui/setup/ReceiverPairing.h"
#include "ui/setup/SignInPage.h"

using namespace Qt::StringLiterals;

// What happens once the device is ready lies in SetupSteps.cpp.

namespace tallyforge {

namespace {

using State = DeviceSession::State;

QList<QString> firstPasswords()
{
    return {factoryPassword};
}

} // namespace

SetupDialog::~SetupDialog()
{
    m_use.next();
    m_account.begin();
    m_held.leave();
}

void SetupDialog::beginConnect(const DeviceChoice &choice)
{
    endUse();
    const auto isCurrent = m_use.watch();
    m_choice = choice;
    m_held.cancel();
    if (!isCurrent() || !m_app) {
        return;
    }
    signInPage()->begin(tr("Connecting to %1").arg(m_choice.label), waitingText(m_choice.carrier));
    if (m_choice.carrier == "usb"_L1) {
        m_app->settings().setLastUsbPort(m_choice.address);
    }
    if (DeviceSession *live = m_held.borrow(m_choice)) {
        follow(live);
        resume(live);
    } else {
        connectAnew();
    }
}

void SetupDialog::connectAnew()
{
    const auto isCurrent = m_use.watch();
    if (m_choice.carrier == "usb"_L1) {
        m_app->releaseUsbRelay(m_choice.address);
    }
    if (!isCurrent()) {
        return;
    }
    DeviceLink *link = m_carriers.makeLink(m_choice);
    if (auto *usb = qobject_cast<UsbLink *>(link)) {
        usb->cloud()->setEnabled(m_app->settings().shareConnection());
    }
    DeviceSession *session = m_held.open(link);
    follow(session);
    showPage(SignIn);
    session->start(firstPasswords());
}

void SetupDialog::follow(DeviceSession *session)
{
    connect(session, &DeviceSession::stateChanged, this, &SetupDialog::onSessionState);
    connect(session->link(), &DeviceLink::failed, this, &SetupDialog::onLinkFailed);
}

// A session whose scores are live is used as it is; one that has come to an end starts over, and
// the scores come back with it.
void SetupDialog::resume(DeviceSession *session)
{
    switch (session->state()) {
    case State::Ready:
        onReady();
        break;
    case State::Idle:
    case State::Lost:
    case State::Error:
    case State::Restarting:
        showPage(SignIn);
        session->start(firstPasswords());
        break;
    default:
        showPage(SignIn);
        if (session->viaReceiver()) {
            session->start(firstPasswords()); // else there would be no way back to the receiver
        } else {
            onSessionState(session->state(), session->detail());
        }
        break;
    }
}

// All answers that are still to come are about a use that has ended.
void SetupDialog::endUse()
{
    m_use.next();
    m_account.begin();
    m_connect->dropScan();
    m_wasReady = false;
    dropPanels();
}

void SetupDialog::cancel()
{
    endUse();
    const auto isCurrent = m_use.watch();
    m_held.cancel();
    if (isCurrent()) {
        showPage(Connect);
    }
}

void SetupDialog::endByUser()
{
    endUse();
    const auto isCurrent = m_use.watch();
    m_held.disconnect();
    if (isCurrent()) {
        showPage(Connect);
        m_connect->scan();
    }
}

void SetupDialog::onLinkFailed(const QString &code, const QString &message)
{
    signInPage()->fail(tr("Could not connect"), failureText(code, message));
}

void SetupDialog::onSessionState(DeviceSession::State state, const QString &detail)
{
    switch (state) {
    case State::Connecting:
    case State::SigningIn:
        signInPage()->setBusy(true);
        break;
    case State::NeedsPassword:
        askForPassword();
        break;
    case State::NeedsNewPassword:
        showPage(SignIn);
        signInPage()->askForNewPassword();
        break;
    case State::Ready:
        onReady();
        break;
    case State::Lost:
        onLost(detail);
        break;
    case State::Error:
        showPage(SignIn);
        signInPage()->fail(tr("Could not connect"),
                           detail.isEmpty() ? m_held.get()->detail() : detail);
        break;
    case State::Restarting:
        signInPage()->setBusy(false);
        break;
    case State::Idle:
        break;
    }
}

void SetupDialog::onLost(const QString &detail)
{
    signInPage()->setBusy(false);
    if (page() == Connect) {
        return;
    }
    QString text = detail.isEmpty() ? tr("The connection to the device was lost. Check the cable, "
                                         "Bluetooth or network and try again.")
                                    : detail;
    // A receiver restarts with its new key, perhaps before the user has written that down.
    if (page() == Receiver && !m_pairing->newKey().isEmpty()) {
        text += u"\n\n"_s + ReceiverPage::newKeyText(m_pairing->newKey());
    }
    showPage(SignIn);
    signInPage()->fail(tr("Connection lost"), text);
}

// The page comes into view also when a device that was ready has restarted with another password.
void SetupDialog::askForPassword()
{
    showPage(SignIn);
    signInPage()->askForPassword();
    m_account.fetch(m_held.get(), m_use.guard([this](const QString &password) {
        signInPage()->setPassword(password);
        signInPage()->showProgress(tr("Signing in with the password saved on your account…"));
        m_held.get()->submitPassword(password);
    }));
}

void SetupDialog::submitPassword(const QString &password)
{
    if (m_held.get() != nullptr) {
        signInPage()->showProgress(tr("Signing in…"));
        m_held.get()->submitPassword(password);
    }
}

void SetupDialog::changePassword(const QString &password)
{
    if (m_held.get() == nullptr) {
        return;
    }
    signInPage()->showProgress(tr("Saving the new password…"));
    const QString typed = signInPage()->password();
    m_held.get()->changePassword(typed.isEmpty() ? QString(factoryPassword) : typed, password,
                                 m_use.guard([this, password](bool ok, const QString &error) {
                                     if (ok) {
                                         rememberPassword(password);
                                     } else {
                                         signInPage()->refuseNewPassword(error);
                                     }
                                 }));
}

void SetupDialog::rememberPassword(const QString &password)
{
    m_account.save(m_held.get(), password);
}

void SetupDialog::manageViaReceiver()
{
    if (m_held.get() == nullptr) {
        return;
    }
    m_wasReady = false;
    m_account.begin();
    signInPage()->begin(tr("Connecting to the paired device through the receiver"),
                        tr("Asking the device over the wireless link. This can take up to a "
                           "minute."));
    showPage(SignIn);
    m_held.get()->manageViaReceiver(firstPasswords());
}

} // namespace tallyforge
