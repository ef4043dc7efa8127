// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The input of the Bluetooth bridge's port: bytes in pieces, lines, and the meanings of each line. The
// first byte says how large the pieces are.

#include "common/JsonText.h"
#include "device/ble/BleHelperLines.h"

#include <QJsonDocument>

#include <cstdlib>

using namespace Qt::StringLiterals;

using namespace tallyforge;

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

QList<QJsonObject> objectsIn(const QByteArray &stream, qsizetype piece)
{
    BleHelperLines lines;
    QList<QJsonObject> objects;
    for (qsizetype at = 0; at < stream.size(); at += piece) {
        lines.append(stream.mid(at, piece));
        while (const std::optional<QJsonObject> object = lines.take()) {
            objects.append(*object);
        }
    }
    require(lines.size() == stream.size() - stream.lastIndexOf('\n') - 1);
    return objects;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    const QByteArray token = "5a17c0de";
    const QByteArray stream(reinterpret_cast<const char *>(data + 1), qsizetype(size) - 1);
    const QList<QJsonObject> objects = objectsIn(stream, stream.size() + 1);
    require(objects == objectsIn(stream, 1 + data[0] % 64));
    for (const QJsonObject &object : objects) {
        require(jsonLine(object).count('\n') == 1);
        require(bleProvesToken(object, token) == (object.value(u"hello"_s) == QString::fromLatin1(token)));
        require(!bleProvesToken(object, {}));
        const BleReply reply = bleReply(object);
        require(reply.ok ? reply.code.isEmpty() && reply.message.isEmpty() : reply.result.isEmpty());
        if (const std::optional<QByteArray> bytes = base64Bytes(object.value(u"b64"_s))) {
            require(bytes->size() <= stream.size());
        }
        require(bleDevices(object).size() <= stream.size());
        require(bleDevices(reply.result).size() <= stream.size());
    }
    return 0;
}
