// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/DeviceLink.h"
#include "device/http/LanAddress.h"

#include <QNetworkAccessManager>
#include <QString>

class QNetworkReply;

namespace tallyforge {

class HttpAdminTransport;

/// A device on the local network, by its plain HTTP interface. Nothing comes from the device by
/// itself: envelope() and closed() are never emitted, and live data must be asked for.
class HttpLink final : public DeviceLink
{
    Q_OBJECT

public:
    /// address is what normalizeLanHost() gives, "host" or "host:port".
    explicit HttpLink(const QString &address, QObject *parent = nullptr);

    [[nodiscard]] QString kind() const override { return QStringLiteral("lan"); }
    [[nodiscard]] QString address() const override { return m_text; }
    /// Asks the device for a sign of life. Any answer opens the link.
    void open() override;
    /// Also forgets the sign-in; requests that are under way are still answered.
    void close() override;
    [[nodiscard]] RpcTransport *transport() override;
    [[nodiscard]] bool pollsState() const override { return true; }

private:
    void onProbed(QNetworkReply *reply);

    const QString m_text; // as it was given
    const LanAddress m_address;
    HttpAdminTransport *const m_transport; // child
    QNetworkAccessManager m_network;       // of the probe
    Generation m_generation;               // begins with open() and close()
};

} // namespace tallyforge
