// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/SettingsStore.h"
#include "plugin/App.h"
#include "ui/manager/DeviceManager.h"
#include "ui/setup/Completion.h"
#include "ui/setup/ConnectPage.h"
#include "ui/setup/ControllerPage.h"
#include "ui/setup/DonePage.h"
#include "ui/setup/ManagerPage.h"
#include "ui/setup/NetworkAccess.h"
#include "ui/setup/ReceiverPage.h"
#include "ui/setup/ReceiverPairing.h"
#include "ui/setup/SetupDialog.h"
#include "ui/setup/SignInPage.h"
#include "ui/setup/WifiPage.h"
#include "ui/widgets/PageStyle.h"

#include <QScreen>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

// SetupDialog's pages, and the steps of a device that is ready.

namespace tallyforge {

namespace {

constexpr QSize usualSize{500, 600};                // logical pixels
constexpr QSize windowFrame{20, 60};                // what a window manager may add
constexpr std::chrono::milliseconds onToNext{1200}; // so that the success can be read

} // namespace

SetupDialog::SetupDialog(App &app, QWidget *parent)
    : SetupDialog(app, realCarriers(), parent)
{
}

SetupDialog::SetupDialog(App &app, Carriers carriers, QWidget *parent)
    : QDialog(parent)
    , m_app(&app)
    , m_carriers(std::move(carriers))
    , m_held(app, this)
    , m_account(app)
{
    setObjectName(u"tallyforgeSetupDialog"_s);
    setWindowTitle(tr("Set up or manage a Tallyforge device"));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(usualSize.boundedTo(screen()->availableSize() - windowFrame));
    new PageStyle(this);
    auto *column = new QVBoxLayout(this);
    m_pages = new QStackedWidget(this);
    column->addWidget(m_pages);
    m_connect = new ConnectPage(m_carriers, app.settings(), m_pages);
    m_pages->addWidget(m_connect);
    for (int place = SignIn; place <= Manager; ++place) {
        m_pages->addWidget(new QWidget(m_pages));
    }
    connect(m_connect, &ConnectPage::connectRequested, this, &SetupDialog::beginConnect);
    m_connect->enter();
    QTimer::singleShot(0, m_connect, &ConnectPage::scan);
    connect(&m_idle, &QTimer::timeout, this, &SetupDialog::makeAhead);
}

void SetupDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    m_idle.start(0);
}

// What the user is likely to need next; a receiver's page is rare.
void SetupDialog::makeAhead()
{
    if (!m_app) {
        m_idle.stop();
    } else if (m_signIn == nullptr) {
        signInPage();
    } else if (m_wifi == nullptr) {
        wifiPage();
    } else if (m_controller == nullptr) {
        controllerPage();
    } else if (m_done == nullptr) {
        donePage();
    } else if (m_manager == nullptr) {
        managerPage();
    } else {
        m_idle.stop();
        if (m_held.get() != nullptr && page() == Done) {
            m_manager->prepare(m_held.get());
        }
    }
}

// Puts a page in the place of the empty one that has kept it.
template <class Made> Made *SetupDialog::fill(Page place, Made *page)
{
    QWidget *empty = m_pages->widget(place);
    m_pages->insertWidget(place, page);
    m_pages->removeWidget(empty);
    delete empty;
    return page;
}

SignInPage *SetupDialog::signInPage()
{
    if (m_signIn == nullptr) {
        m_signIn = fill(SignIn, new SignInPage(m_pages));
        connect(m_signIn, &SignInPage::passwordEntered, this, &SetupDialog::submitPassword);
        connect(m_signIn, &SignInPage::newPasswordChosen, this, &SetupDialog::changePassword);
        connect(m_signIn, &SignInPage::cancelled, this, &SetupDialog::cancel);
    }
    return m_signIn;
}

WifiPage *SetupDialog::wifiPage()
{
    if (m_wifi == nullptr) {
        m_wifi = fill(Wifi, new WifiPage(m_pages));
        connect(m_wifi, &WifiPage::joined, this, &SetupDialog::onWifiJoined);
        connect(m_wifi, &WifiPage::skipped, this, &SetupDialog::showController);
    }
    return m_wifi;
}

ControllerPage *SetupDialog::controllerPage()
{
    if (m_controller == nullptr) {
        m_controller = fill(Controller, new ControllerPage(m_pages));
        connect(m_controller, &ControllerPage::saved, this, &SetupDialog::showDone);
        connect(m_controller, &ControllerPage::skipped, this, &SetupDialog::showDone);
    }
    return m_controller;
}

ReceiverPage *SetupDialog::receiverPage()
{
    if (m_receiver == nullptr) {
        m_receiver = fill(Receiver, new ReceiverPage(m_app->settings(), m_pages));
        m_pairing = new ReceiverPairing(m_held, m_receiver);
        connect(m_receiver, &ReceiverPage::manageRequested, this, &SetupDialog::manageViaReceiver);
        connect(m_receiver, &ReceiverPage::useRequested, this, [this] {
            useInObs(m_choice.label.isEmpty() ? tr("wireless receiver") : m_choice.label);
        });
    }
    return m_receiver;
}

DonePage *SetupDialog::donePage()
{
    if (m_done == nullptr) {
        m_done = fill(Done, new DonePage(m_pages));
        m_completion = new Completion(m_app, m_held, m_done);
        connect(m_done, &DonePage::useRequested, this, [this] { useInObs(deviceName()); });
        connect(m_done, &DonePage::moreRequested, this, &SetupDialog::openManager);
        connect(m_done, &DonePage::closeRequested, this, &SetupDialog::close);
    }
    return m_done;
}

ManagerPage *SetupDialog::managerPage()
{
    if (m_manager == nullptr) {
        m_manager = fill(Manager, new ManagerPage(m_app->settings(), m_pages));
        connect(m_manager, &ManagerPage::useRequested, this, [this] { useInObs(deviceName()); });
        connect(m_manager, &ManagerPage::disconnectRequested, this, &SetupDialog::endByUser);
    }
    return m_manager;
}

SetupDialog::Page SetupDialog::page() const
{
    return static_cast<Page>(m_pages->currentIndex());
}

void SetupDialog::showPage(Page page)
{
    if (page >= Wifi) {
        m_lastStep = page;
    }
    m_pages->setCurrentIndex(page);
    if (auto *shown = qobject_cast<SetupPage *>(m_pages->currentWidget())) {
        shown->enter();
    }
}

void SetupDialog::dropPanels()
{
    if (m_wifi != nullptr) {
        m_wifi->dropPanel();
    }
    if (m_controller != nullptr) {
        m_controller->dropPanel();
    }
    if (m_manager != nullptr) {
        m_manager->dropManager();
    }
}

// A session that comes back goes on where it was.
void SetupDialog::onReady()
{
    if (m_wasReady) {
        if (page() == SignIn) {
            showPage(m_lastStep);
            if (m_lastStep == Manager) {
                managerPage()->refresh(); // the device may tell something else after a restart
            }
        }
        return;
    }
    m_wasReady = true;
    if (m_app && m_held.get()->receiverMode()) {
        receiverPage();
        m_pairing->follow();
        showPage(Receiver);
        return;
    }
    rememberAccess();
    if (m_held.get()->wifiIp().isEmpty() && m_choice.carrier != "lan"_L1) {
        wifiPage()->install(m_held.get());
        showPage(Wifi);
        wifiPage()->refresh();
    } else {
        openManager();
    }
}

void SetupDialog::rememberAccess()
{
    if (m_app && m_held.get() != nullptr && m_choice.carrier != "lan"_L1) {
        rememberNetworkAccess(*m_app, m_held.get());
    }
}

void SetupDialog::rememberToken(const QString &token)
{
    if (!m_app || m_held.get() == nullptr) {
        return;
    }
    // A device that isn't on Wi-Fi just now is followed at the address that it had.
    const QString id = m_held.get()->deviceId();
    const QString address = m_held.get()->wifiIp();
    storeNetworkAccess(*m_app, id,
                       address.isEmpty() ? m_app->settings().lanDevice(id).host : address, token);
}

void SetupDialog::onWifiJoined()
{
    rememberAccess();
    QTimer::singleShot(onToNext, this, m_use.guard([this] {
        if (page() == Wifi) {
            showController();
        }
    }));
}

void SetupDialog::showController()
{
    if (m_held.get() == nullptr) {
        return;
    }
    if (!controllerPage()->hasPanel()) {
        controllerPage()->install(m_held.get());
    }
    showPage(Controller);
    controllerPage()->refresh();
}

void SetupDialog::showDone()
{
    if (m_held.get() == nullptr) {
        return;
    }
    controllerPage()->leave(); // the device may be busy, so that its answer takes a while
    m_held.get()->refreshStatus(m_use.guard([this](bool, const QString &) {
        if (page() == Controller) {
            donePage();
            m_completion->show(m_choice.label);
            showPage(Done);
            m_idle.start(0);
        }
    }));
}

void SetupDialog::openManager()
{
    if (m_app && m_held.get() != nullptr) {
        DeviceManager *manager = managerPage()->install(m_held.get(), deviceName());
        connect(manager, &DeviceManager::apiToken, this, &SetupDialog::rememberToken);
        connect(manager, &DeviceManager::passwordChanged, this, &SetupDialog::rememberPassword);
        connect(manager, &DeviceManager::deviceIdChanged, m_manager,
                [this] { m_manager->setDevice(deviceName()); });
        showPage(Manager);
        manager->showPage(0);
    }
}

QString SetupDialog::deviceName() const
{
    const QString id = m_held.get() == nullptr ? QString() : m_held.get()->deviceId();
    return id.isEmpty() ? m_choice.label : id;
}

void SetupDialog::useInObs(const QString &name)
{
    if (m_held.get() != nullptr) {
        endUse();
        const auto isCurrent = m_use.watch();
        m_held.giveToLiveData(name);
        if (isCurrent()) {
            close();
        }
    }
}

} // namespace tallyforge
