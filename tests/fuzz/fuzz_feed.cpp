// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A device's feed: bytes in pieces, lines, envelopes, and what text they leave behind.

#include "common/LineBuffer.h"
#include "core/LiveData.h"

#include <QJsonDocument>

#include <cstdlib>

using namespace tallyforge;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    const qsizetype piece = 1 + data[0] % 64;
    const QByteArray stream(reinterpret_cast<const char *>(data + 1), qsizetype(size) - 1);
    LineBuffer buffer;
    LiveData live;
    qsizetype lines = 0;
    for (qsizetype at = 0; at < stream.size(); at += piece) {
        buffer.append(stream.mid(at, piece));
        while (const std::optional<QByteArray> line = buffer.takeLine()) {
            ++lines;
            live.ingest(QJsonDocument::fromJson(*line).object());
        }
    }
    if (lines != stream.count('\n') || buffer.size() != stream.size() - stream.lastIndexOf('\n') - 1 ||
        live.toJson().size() != 4) {
        std::abort();
    }
    return 0;
}
