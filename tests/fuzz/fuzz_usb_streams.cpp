// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The stream tunnel: messages from the device, events of the network, and both from inside a slot.
// A step's upper bit puts it off to the next signal.

#include "device/usb/StreamMessage.h"
#include "device/usb/StreamRelay.h"
#include "tests/fuzz/Harness.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

#include <array>

using namespace tallyforge;
using namespace tallyforge::fuzz;

namespace {

class Tunnel final : public Scenario
{
public:
    Tunnel()
    {
        relay.socketFactory = [this](QObject *parent) {
            require(enabled);
            return makeSocket(parent);
        };
        QObject::connect(&relay, &StreamRelay::toDevice, &relay, [this](const QByteArray &bytes) {
            check(bytes);
            runPutOff();
        });
        QObject::connect(&relay, &StreamRelay::statusChanged, &relay, [this] { runPutOff(); });
    }

    void finish() const
    {
        require(relay.status().bytesToDevice == sent);
        require(relay.status().activeStreams <= 255);
    }

private:
    void run(unsigned char what, const QByteArray &bytes) override
    {
        switch (what % 8) {
        case 0:
        case 1:
            countCredit(bytes);
            relay.fromDevice(bytes);
            break;
        case 2:
            relay.setDestinations(QJsonDocument::fromJson(bytes).object());
            break;
        case 3:
            enabled = bytes.startsWith('\1');
            relay.setEnabled(enabled);
            break;
        case 4:
            relay.reset();
            break;
        default:
            network(7U - what % 8, bytes);
            break;
        }
    }

    void countCredit(const QByteArray &bytes)
    {
        const stream::Message message = stream::decode(bytes).value_or(stream::Message());
        if (message.type == stream::Open) {
            credit[message.id] = 0;
        } else if (message.type == stream::Credit && message.payload.size() == 4) {
            credit[message.id] += qFromLittleEndian<quint32>(message.payload.constData());
        }
    }

    void check(const QByteArray &bytes)
    {
        const stream::Message message = stream::decode(bytes).value_or(stream::Message());
        require(message.id != 0 && message.payload.size() <= 512);
        if (message.type == stream::Data) {
            require(!message.payload.isEmpty() && message.payload.size() <= credit[message.id]);
            credit[message.id] -= message.payload.size();
            sent += message.payload.size();
        }
    }

    StreamRelay relay;
    std::array<qint64, 256> credit{};
    qint64 sent = 0;
    bool enabled = true;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int argc = 0;
    static const QCoreApplication application(argc, nullptr);
    Tunnel tunnel;
    tunnel.play(bytesOf(data, size));
    tunnel.finish();
    return 0;
}
