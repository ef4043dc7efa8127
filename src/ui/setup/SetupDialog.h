// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/DeviceSession.h"
#include "ui/setup/AccountPassword.h"
#include "ui/setup/Carriers.h"
#include "ui/setup/HeldSession.h"

#include <QDialog>
#include <QPointer>
#include <QTimer>

class QStackedWidget;

namespace tallyforge {

class App;
class Completion;
class ConnectPage;
class ControllerPage;
class DonePage;
class ManagerPage;
class ReceiverPage;
class ReceiverPairing;
class SetupPage;
class SignInPage;
class WifiPage;

/// The guided way from a new device to one that is on the network, knows its scoreboard and feeds
/// OBS; and the way to a device's settings. It alone knows the session and its states: the pages
/// show what they are told. Not modal; it deletes itself when it is closed, and needs no account. A
/// session of its own ends with it, unless the live data follow the session or it lends its device
/// this computer's internet.
class SetupDialog final : public QDialog
{
    Q_OBJECT

public:
    /// The pages' places in the stack.
    enum Page {
        Connect,
        SignIn,
        Wifi,
        Controller,
        Receiver,
        Done,
        Manager,
    };

    /// app isn't owned. It may end before the dialog does, but the user can't use that any more.
    SetupDialog(App &app, QWidget *parent);
    SetupDialog(App &app, Carriers carriers, QWidget *parent);
    ~SetupDialog() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    // The pages, each made when OBS has nothing else to do, or when it is needed earlier.
    template <class Made> Made *fill(Page place, Made *page);
    SignInPage *signInPage();
    WifiPage *wifiPage();
    ControllerPage *controllerPage();
    ReceiverPage *receiverPage();
    DonePage *donePage();
    ManagerPage *managerPage();
    void makeAhead();
    void showPage(Page page);
    [[nodiscard]] Page page() const;

    // The connection.
    void beginConnect(const DeviceChoice &choice);
    void connectAnew();
    void follow(DeviceSession *session);
    void resume(DeviceSession *session);
    void endUse();
    void dropPanels();
    void cancel();
    void endByUser();
    void onLinkFailed(const QString &code, const QString &message);
    void onSessionState(DeviceSession::State state, const QString &detail);
    void onLost(const QString &detail);

    // Passwords.
    void askForPassword();
    void submitPassword(const QString &password);
    void changePassword(const QString &password);
    void rememberPassword(const QString &password);

    // A device that is ready.
    void onReady();
    void rememberAccess();
    void rememberToken(const QString &token);
    void onWifiJoined();
    void showController();
    void showDone();
    void openManager();
    void manageViaReceiver();
    void useInObs(const QString &name);
    [[nodiscard]] QString deviceName() const;

    const QPointer<App> m_app;
    const Carriers m_carriers;
    QStackedWidget *m_pages = nullptr;
    ConnectPage *m_connect = nullptr;
    // Null until they're needed, or made ahead.
    SignInPage *m_signIn = nullptr;
    WifiPage *m_wifi = nullptr;
    ControllerPage *m_controller = nullptr;
    ReceiverPage *m_receiver = nullptr;
    ReceiverPairing *m_pairing = nullptr;
    DonePage *m_done = nullptr;
    Completion *m_completion = nullptr;
    ManagerPage *m_manager = nullptr;
    QTimer m_idle; // a turn of the event loop for each piece of work

    HeldSession m_held;
    DeviceChoice m_choice;     // that led to the session
    bool m_wasReady = false;   // the session has been ready, and its way has begun
    Page m_lastStep = Connect; // of that way
    AccountPassword m_account;
    Generation m_use; // of the session: begins and ends with it
};

} // namespace tallyforge
