// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "portal/PortalTypes.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <shared_mutex>

namespace tallyforge {

class PortalClient;

/// The account's graphics. The list is the one that came last, empty when signed out; the error
/// tells why it could not be listed, and is empty after a success.
struct AccountGraphics
{
    bool signedIn = false;
    QList<GraphicsOutput> outputs;
    QString error;
};

/// The devices and graphics of the account, as the portal has listed them last. Main thread only,
/// except for graphics().
class AccountLists final : public QObject
{
    Q_OBJECT

public:
    using Callback = std::function<void(bool ok, const QString &message)>;

    /// The portal must outlive it.
    explicit AccountLists(PortalClient *portal);

    /// A copy. Any thread.
    [[nodiscard]] AccountGraphics graphics() const;
    [[nodiscard]] const QList<PortalDevice> &devices() const { return m_devices; }
    [[nodiscard]] const QList<GraphicsOutput> &outputs() const { return m_graphics.outputs; }
    /// Why the graphics could not be listed, empty after a success.
    [[nodiscard]] QString outputsError() const { return m_graphics.error; }
    /// Whether the account has a device of exactly this id.
    [[nodiscard]] bool hasDevice(const QString &id) const;

    /// Notes a sign-in, or empties the lists after a sign-out.
    void setSignedIn(bool signedIn);

    /// Lists the account's devices or graphics. A failure leaves the last list standing. The
    /// callback may be empty.
    void refreshDevices(const Callback &callback);
    void refreshOutputs(const Callback &callback);
    /// refreshOutputs() in a local event loop of at most timeoutMs milliseconds; true on success.
    /// The user's input meanwhile waits for its end.
    bool refreshOutputsBlocking(int timeoutMs);
    /// Has refreshOutputsBlocking() return at once.
    void endWait();

Q_SIGNALS:
    void devicesChanged();
    void outputsChanged();
    /// endWait() has been called.
    void waitEnded();

private:
    void setOutputs(const QList<GraphicsOutput> &outputs);
    void setOutputsError(const QString &error);

    PortalClient *const m_portal;
    QList<PortalDevice> m_devices;
    // Changed by the main thread alone, which therefore reads it without the lock.
    AccountGraphics m_graphics;
    mutable std::shared_mutex m_graphicsMutex;
};

} // namespace tallyforge
