// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A whole USB link: frames of all types from a device, calls of the link's user, events of the
// network, and all of them from inside a slot. The port and the clock are the fuzzer's, so that
// an hour on the cable takes no time. A step's upper bit puts it off to the next signal.

#include "device/RpcTransport.h"
#include "device/usb/UsbLink.h"
#include "tests/fuzz/Harness.h"
#include "tests/support/SkippedTime.h"

#include <QCoreApplication>

#include <array>
#include <chrono>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

using namespace tallyforge;
using namespace tallyforge::fuzz;
using namespace std::chrono_literals;

namespace {

struct Wire
{
    QByteArray toHost, toDevice;
    QByteArray waiting; // for the driver
    int opened = 0;     // ports that are open
    bool unplugged = false, broken = false, full = false;
} wire;

} // namespace

// In place of those over termios: the linker takes these first.
namespace tallyforge::serial_platform {

struct Handle
{
};

Handle *openPort(const QString &, int, QString *)
{
    if (wire.broken) {
        return nullptr;
    }
    ++wire.opened;
    wire.toHost.clear();
    wire.waiting.clear();
    wire.unplugged = false;
    return new Handle;
}

void closePort(Handle *handle)
{
    if (handle != nullptr) {
        --wire.opened;
        delete handle;
    }
}

qint64 readSome(Handle *, char *buffer, qint64 size)
{
    if (wire.unplugged) {
        return -1;
    }
    const QByteArray bytes = wire.toHost.left(size);
    std::copy(bytes.begin(), bytes.end(), buffer);
    wire.toHost.remove(0, bytes.size());
    return bytes.size();
}

bool writeAll(Handle *handle, const QByteArray &bytes)
{
    wire.waiting += bytes;
    return wire.full || keepWriting(handle);
}

bool keepWriting(Handle *)
{
    const QByteArray bytes = std::exchange(wire.waiting, {});
    if (wire.broken || wire.full) {
        return false;
    }
    wire.toDevice += bytes;
    return true;
}

bool isWriting(const Handle *)
{
    return !wire.waiting.isEmpty();
}

QList<SerialPortInfo> list()
{
    return {};
}

} // namespace tallyforge::serial_platform

namespace {

class Cable final : public Scenario
{
public:
    Cable()
    {
        wire = {};
        m_link->cloud()->socketFactory = [this](QObject *parent) { return makeSocket(parent); };
        m_link->streams()->socketFactory = m_link->cloud()->socketFactory;
        UsbLink *const link = m_link.get();
        const auto whenOpen = [this] {
            require(wire.opened == 1);
            runPutOff();
        };
        QObject::connect(link, &DeviceLink::opened, link, [this] {
            require(wire.opened == 1 && !std::exchange(m_hasOpened, true));
            runPutOff();
        });
        QObject::connect(link, &DeviceLink::closed, link, [this] {
            require(wire.opened == 0 && !std::exchange(m_hasClosed, true));
            runPutOff();
        });
        QObject::connect(link, &DeviceLink::failed, link, [this] {
            require(!m_hasOpened && !std::exchange(m_hasFailed, true));
            runPutOff();
        });
        QObject::connect(link, &DeviceLink::envelope, link, whenOpen);
        QObject::connect(link, &UsbLink::receiverUpdated, link, whenOpen);
        QObject::connect(link->transport(), &RpcTransport::message, link, whenOpen);
        QObject::connect(link, &UsbLink::tunnelChanged, link, [this] {
            ++m_inTunnel;
            runPutOff();
            --m_inTunnel;
        });
        open();
    }

    // Nothing waits for a receiver any more, and the bytes that went out are whole frames.
    void finish()
    {
        pass(6s);
        require(m_link == nullptr || m_answered == m_asked);
        m_link = nullptr;
        require(wire.opened == 0);
        UsbFrameParser parser;
        qsizetype size = 0;
        const QList<UsbFrame> frames = parser.feed(wire.toDevice);
        for (const UsbFrame &frame : frames) {
            size += frame.payload.size() + 8;
        }
        require(size == wire.toDevice.size());
    }

private:
    static void pass(std::chrono::nanoseconds time)
    {
        test::skippedTime += time;
        QCoreApplication::processEvents();
    }

    void afterStep(unsigned char what, const QByteArray &bytes) override
    {
        if ((what & 0x20) == 0) { // else one reading finds the next bytes as well
            pass(16ms * (what % 8 == 7 ? 16 * bytes.size() : 1));
        }
    }

    void run(unsigned char what, const QByteArray &bytes) override
    {
        const bool larger = (what & 0x40) != 0;
        switch (what % 8) {
        case 0:
            wire.toHost += bytes;
            break;
        case UsbFrame::Ctrl:
            wire.toHost += buildFrame(UsbFrame::Ctrl, larger ? ctrl(bytes) : bytes);
            break;
        case UsbFrame::Admin:
            wire.toHost +=
                larger ? buildAdminFrames('{' + bytes.repeated(40)).join() : buildFrame(UsbFrame::Admin, bytes);
            break;
        case 6:
            if (m_link != nullptr && !bytes.isEmpty()) {
                act(static_cast<unsigned char>(bytes[0]), bytes.mid(1));
            }
            break;
        case 7:
            break; // time passes
        default:
            wire.toHost += buildFrame(what % 8, bytes);
            break;
        }
    }

    // A message of a known type, with members of the fuzzer's choice.
    static QByteArray ctrl(const QByteArray &bytes)
    {
        constexpr std::array types{"hello", "rx_status", "rx_set", "rx_reboot", "rx_error"};
        const size_t type = bytes.isEmpty() ? 0 : static_cast<unsigned char>(bytes[0]) % types.size();
        return QByteArray("{\"t\":\"") + types[type] + "\"" + bytes.mid(1) + "}";
    }

    void act(unsigned char what, const QByteArray &bytes)
    {
        switch (what % 8) {
        case 0:
            open();
            break;
        case 1:
            m_hasOpened = m_hasClosed = m_hasFailed = true; // nothing may come any more
            m_link->close();
            break;
        case 2:
            ask(QString::fromUtf8(bytes), (what & 0x10) != 0, what >> 5);
            break;
        case 3:
            m_link->cloud()->setEnabled((what & 0x10) != 0);
            break;
        case 4:
            m_link->transport()->send(bytes.repeated(20));
            break;
        case 5:
            network(what >> 4, bytes);
            break;
        case 6:
            wire.unplugged = (what & 0x10) != 0;
            wire.broken = (what & 0x20) != 0;
            wire.full = (what & 0x40) != 0;
            break;
        default:
            if (m_inTunnel == 0) {
                m_link = nullptr;
            }
            break;
        }
    }

    void open()
    {
        m_hasOpened = m_hasClosed = m_hasFailed = false;
        m_link->open();
    }

    void ask(const QString &key, bool generateKey, int channel)
    {
        ++m_asked;
        const auto answered = std::make_shared<bool>(false);
        m_link->receiverSet(key, generateKey, channel,
                            [this, answered](bool ok, const QString &, const QString &error) {
                                require(!std::exchange(*answered, true) && (!ok || error.isEmpty()));
                                ++m_answered;
                                runPutOff();
                            });
    }

    std::unique_ptr<UsbLink> m_link = std::make_unique<UsbLink>(u"port"_s);
    int m_inTunnel = 0;       // slots of the one signal in which the link mustn't be deleted
    bool m_hasOpened = false; // since open(), as the next two
    bool m_hasClosed = false;
    bool m_hasFailed = false;
    int m_asked = 0;
    int m_answered = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int argc = 0;
    static const QCoreApplication application(argc, nullptr);
    test::timeStandsStill = true;
    Cable cable;
    cable.play(bytesOf(data, size));
    cable.finish();
    return 0;
}
