// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A device's USB stream: frames however they are split, and the admin texts in them.

#include "device/usb/AdminFragments.h"
#include "device/usb/UsbFrame.h"

#include <cstdlib>

using namespace tallyforge;

namespace {

QList<UsbFrame> parse(const QByteArray &stream, qsizetype piece)
{
    UsbFrameParser parser;
    QList<UsbFrame> frames;
    for (qsizetype at = 0; at < stream.size(); at += piece) {
        frames += parser.feed(stream.mid(at, piece));
    }
    return frames;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    const QByteArray stream(reinterpret_cast<const char *>(data + 1), qsizetype(size) - 1);
    const QList<UsbFrame> whole = parse(stream, stream.size() + 1);
    const QList<UsbFrame> pieces = parse(stream, 1 + data[0] % 32);
    AdminReassembler reassembler;
    for (qsizetype i = 0; i < whole.size(); ++i) {
        const UsbFrame &frame = whole[i];
        if (i >= pieces.size() || frame.type != pieces[i].type || frame.payload != pieces[i].payload ||
            !stream.contains(buildFrame(frame.type, frame.payload)) || reassembler.feed(frame.payload).size() > 65535) {
            std::abort();
        }
    }
    return whole.size() == pieces.size() ? 0 : (std::abort(), 0);
}
