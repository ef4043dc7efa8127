// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// What a device answers over Bluetooth, in any writes; and every request, cut up and put together again.
// An input is a row of writes, each behind its length.

#include "device/ble/BleFragments.h"

#include <algorithm>
#include <cstdlib>

using namespace tallyforge;

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

void cutAndJoin(const QByteArray &text, int writePayload)
{
    const QList<QByteArray> fragments = bleEncodeRequest(text, writePayload, 7);
    require(fragments.isEmpty() == (text.size() > 8192));
    BleReplyAssembler assembler;
    QList<QByteArray> joined;
    for (const QByteArray &fragment : fragments) {
        require(fragment.size() <= std::clamp(writePayload, 20, 244));
        joined += assembler.feed(fragment);
    }
    require(fragments.size() < 2 || joined == QList<QByteArray>{text});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    BleReplyAssembler assembler;
    int truncated = 0;
    qsizetype fed = 0;
    qsizetype joined = 0;
    assembler.onTruncated = [&](const QString &) { ++truncated; };
    for (qsizetype at = 0; at < input.size();) {
        const auto length = qsizetype(static_cast<unsigned char>(input[at]));
        const QByteArray write = input.mid(at + 1, length);
        at += 1 + length;
        fed += write.size();
        const int before = truncated;
        const QList<QByteArray> messages = assembler.feed(write);
        require(messages.size() <= 1 && truncated - before <= (messages.isEmpty() ? 1 : 0));
        joined += messages.isEmpty() ? 0 : messages.constFirst().size();
        require(joined <= fed); // nothing is made up, and nothing comes twice
    }
    cutAndJoin(input, size == 0 ? 20 : data[0] + 10);
    return 0;
}
