// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/RpcTransport.h"
#include "device/ble/BleFragments.h"

#include <QByteArray>
#include <QList>

namespace tallyforge {

class BleBridge;
struct BleReply;

/// Carries requests in writes of a Bluetooth connection, each only when the one before has been
/// confirmed. Fragments of two requests are never mixed. Opened and ended by its link.
class BleTransport final : public RpcTransport
{
    Q_OBJECT

public:
    /// The bridge isn't owned and must outlive the transport.
    BleTransport(BleBridge *bridge, QObject *parent);

    [[nodiscard]] bool isOpen() const override { return m_open; }
    void send(const QByteArray &json) override;

    /// The connection is up and takes so many bytes in one write.
    void start(int writePayload);
    /// The connection has ended. All that was on its way is dropped.
    void stop();
    /// Takes one write of the device.
    void deliver(const QByteArray &bytes);

private:
    void pumpWrites();
    void onWritten(const BleReply &reply);

    BleBridge *const m_bridge;
    bool m_open = false;
    int m_writePayload;
    int m_messageId = 0; // the latest request's
    BleReplyAssembler m_assembler;
    QList<QByteArray> m_writeQueue; // fragments, also of several requests
    bool m_writing = false;
    Generation m_generation; // of the connection: a late confirmation counts for no other
};

} // namespace tallyforge
