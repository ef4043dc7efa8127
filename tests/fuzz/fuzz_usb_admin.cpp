// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The admin texts in a device's frames. Each step is a payload or, without its upper bit, a text
// of up to 32 kilobytes that comes in the frames which are made of it.

#include "device/usb/AdminFragments.h"
#include "device/usb/UsbFrame.h"
#include "tests/fuzz/Harness.h"

#include <QtEndian>

using namespace tallyforge;
using namespace tallyforge::fuzz;

namespace {

void takePayload(AdminReassembler &reassembler, const QByteArray &payload)
{
    const QByteArray text = reassembler.feed(payload);
    require(text.isEmpty() || (payload.startsWith('{') && text == payload) ||
            text.size() == qFromBigEndian<quint16>(payload.constData()));
}

void takeText(AdminReassembler &reassembler, const QByteArray &text)
{
    if (text.size() >> 8 == '{') {
        return; // looks like a whole text, which its first fragment isn't
    }
    reassembler.reset();
    QByteArray completed;
    const QList<QByteArray> frames = buildAdminFrames(text);
    for (const QByteArray &frame : frames) {
        require(completed.isEmpty());
        completed = reassembler.feed(frame.mid(6, frame.size() - 8));
    }
    require(completed == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    AdminReassembler reassembler;
    forEachStep(bytesOf(data, size), [&reassembler](unsigned char what, const QByteArray &bytes) {
        if (what >= 0x80) {
            takePayload(reassembler, bytes);
        } else {
            takeText(reassembler, '{' + bytes.repeated(what));
        }
    });
    return 0;
}
