// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/BuildConfig.h"
#include "core/LiveData.h"
#include "core/SettingsStore.h"
#include "core/SourceManager.h"
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
class UsbRelays;

/// The plug-in's one object: owns the services, wires them to each other and decides at start-up
/// which device is followed. All of it belongs to the main thread, unless it says otherwise.
class App final : public QObject
{
    Q_OBJECT

public:
    using Callback = std::function<void(bool ok, const QString &message)>;

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

    /// What is known of the account's graphics. The list is the one that came last, empty when
    /// signed out; the error tells why it could not be listed, and is empty after a success.
    struct Graphics
    {
        bool signedIn = false;
        QList<GraphicsOutput> outputs;
        QString error;
    };
    /// A copy of it; nothing when the plug-in isn't running. Any thread.
    [[nodiscard]] static std::optional<Graphics> graphics();
    /// Has the graphics listed soon. Any thread.
    static void requestOutputs();

    ~App() override;

    [[nodiscard]] PortalClient &portal() { return m_portal; }
    [[nodiscard]] LiveData &live() { return m_live; }
    [[nodiscard]] SettingsStore &settings() { return m_settings; }
    [[nodiscard]] SourceManager *sources() { return m_sources; }
    [[nodiscard]] PluginUpdater &updater() { return m_updater; }
    [[nodiscard]] HostedServer *server() { return m_server; }
    /// The account's devices and graphics as they were listed last; empty when signed out.
    [[nodiscard]] const QList<PortalDevice> &devices() const { return m_devices; }
    [[nodiscard]] const QList<GraphicsOutput> &outputs() const { return m_graphics.outputs; }
    /// Why the graphics could not be listed, empty after a success.
    [[nodiscard]] QString outputsError() const { return m_graphics.error; }

    /// Lists the account's devices or graphics. A failure leaves the last list standing. The
    /// callback may be empty.
    void refreshDevices(const Callback &callback);
    void refreshOutputs(const Callback &callback);
    /// refreshOutputs() in a local event loop of at most timeoutMs milliseconds; true on success.
    /// What the user does meanwhile waits for its end, and whoever closes a window ends it.
    bool refreshOutputsBlocking(int timeoutMs);

    /// Follows the stored device, or the only one, unless a route is set already.
    void autoSelectSource();
    /// Stores a device as the chosen one and follows it over its stored route.
    void selectCloudDevice(const QString &id);

    /// Starts or stops the server for other programs as the settings say. All programs are
    /// disconnected by it.
    void applyServerSettings();

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
    [[nodiscard]] QJsonObject statusReply() const;
    [[nodiscard]] QJsonObject devicesReply() const;
    [[nodiscard]] QJsonObject useDevice(const QString &id);
    [[nodiscard]] bool hasDevice(const QString &id) const;
    void restoreSession();
    void onSignedInChanged(bool signedIn);
    void onSessionLeft(DeviceSession *session);
    void setOutputs(const QList<GraphicsOutput> &outputs);
    void setOutputsError(const QString &error);
    void logStatus() const;
    void startUpdater();
    void onUpdaterChanged();

    PortalClient m_portal;
    LiveData m_live;
    SettingsStore m_settings;
    PluginUpdater m_updater{this};
    UsbRelays *m_relayOwner = nullptr;  // child
    SourceManager *m_sources = nullptr; // child
    HostedServer *m_server = nullptr;   // child
    QList<PortalDevice> m_devices;
    Graphics m_graphics; // changes under the lock that keeps other threads' readers out
};

} // namespace tallyforge
