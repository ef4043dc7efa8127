// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/BuildConfig.h"
#include "core/LiveData.h"
#include "core/SettingsStore.h"
#include "core/SourceManager.h"
#include "plugin/AccountLists.h"
#include "plugin/ProgramCommands.h"
#include "portal/PortalClient.h"
#include "updater/PluginUpdater.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tallyforge {

class HostedServer;
class UpdateSchedule;
class UsbRelays;

/// The plug-in's one object: owns the services, wires them to each other and decides at start-up
/// which device is followed. All of it belongs to the main thread, unless it says otherwise.
class App final : public QObject
{
    Q_OBJECT

public:
    using Callback = AccountLists::Callback;

    /// Makes the singleton unless it exists. portalUrl is the portal's base address.
    static void init(const QString &portalUrl = build_config::portalUrl());
    /// Ends the singleton. From the first moment of it, no other thread can reach it any more.
    static void shutdown();
    /// The singleton, null when the plug-in isn't running.
    [[nodiscard]] static App *get();
    /// Whether the plug-in is running. Any thread.
    [[nodiscard]] static bool ready();
    /// Hands the live data to reader and keeps them alive until it has returned. False, without a
    /// call, when the plug-in isn't running. Any thread; reader must not call into libobs or App.
    static bool readLive(const std::function<void(const LiveData &)> &reader);

    /// What is known of the account's graphics; nothing when the plug-in isn't running. Any thread.
    [[nodiscard]] static std::optional<AccountGraphics> graphics();
    /// Has the graphics listed soon. Any thread.
    static void requestOutputs();

    ~App() override;

    [[nodiscard]] PortalClient &portal() { return m_portal; }
    [[nodiscard]] LiveData &live() { return m_live; }
    [[nodiscard]] SettingsStore &settings() { return m_settings; }
    [[nodiscard]] SourceManager *sources() { return m_sources; }
    [[nodiscard]] PluginUpdater &updater() { return m_updater; }
    [[nodiscard]] HostedServer *server() { return m_server; }
    [[nodiscard]] AccountLists &lists() { return m_lists; }
    /// As in AccountLists.
    [[nodiscard]] const QList<PortalDevice> &devices() const { return m_lists.devices(); }
    [[nodiscard]] const QList<GraphicsOutput> &outputs() const { return m_lists.outputs(); }
    [[nodiscard]] QString outputsError() const { return m_lists.outputsError(); }
    void refreshDevices(const Callback &callback) { m_lists.refreshDevices(callback); }
    void refreshOutputs(const Callback &callback) { m_lists.refreshOutputs(callback); }
    bool refreshOutputsBlocking(int timeoutMs) { return m_lists.refreshOutputsBlocking(timeoutMs); }

    /// Follows the stored device, or the only one, unless a route is set already.
    void autoSelectSource();
    /// Stores a device as the chosen one and follows it over its stored route.
    void selectCloudDevice(const QString &id);

    /// Starts or stops the server for other programs as the settings say. All programs are
    /// disconnected by it.
    void applyServerSettings();

    /// What other programs are told of how the live data come.
    [[nodiscard]] QJsonObject statusForPrograms() const { return m_commands.state(); }

    /// Looks for a newer version of the plug-in; with manual false only if the user wants that.
    void checkForUpdates(bool manual);

    /// Takes a USB session over from the dialog that opened it, so that its device keeps its way to
    /// the cloud over this computer. False, with the session left alone, if the user doesn't share
    /// the connection or there is nothing to go on with.
    bool keepUsbRelay(DeviceSession *session);
    /// Ends the kept session on a serial port, so that a dialog can open the port.
    void releaseUsbRelay(const QString &portName);
    void stopUsbRelays();
    /// A line for the user about each kept session.
    [[nodiscard]] QStringList usbRelaySummaries() const;

Q_SIGNALS:
    /// usbRelaySummaries() may have changed.
    void usbRelaysChanged();
    void devicesChanged();
    void outputsChanged();
    /// The server for other programs has been started or stopped, or a program has come or gone.
    void serverStateChanged();

private:
    explicit App(const QString &portalUrl);

    [[nodiscard]] QJsonObject handleCommand(const QString &op, const QJsonObject &request);
    void restoreSession();
    void onSignedInChanged(bool signedIn);
    void onSessionLeft(DeviceSession *session);
    void logStatus() const;

    PortalClient m_portal;
    AccountLists m_lists{&m_portal};
    LiveData m_live;
    SettingsStore m_settings;
    PluginUpdater m_updater{this};
    ProgramCommands m_commands{*this};
    UsbRelays *m_relayOwner = nullptr;   // child
    SourceManager *m_sources = nullptr;  // child
    HostedServer *m_server = nullptr;    // child
    UpdateSchedule *m_updates = nullptr; // child
};

} // namespace tallyforge
