// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// What a device answers over HTTP: whatever it is, it becomes one reply that is whole.

#include "device/http/HttpAnswer.h"

#include <QJsonDocument>

#include <cstdlib>

using namespace Qt::StringLiterals;

using namespace tallyforge;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2) {
        return 0;
    }
    const int status = data[0] == 0 ? 0 : 100 + data[0] * 2 + data[1] % 2;
    const QByteArray body(reinterpret_cast<const char *>(data + 2), qsizetype(size) - 2);
    const HttpAnswer read = HttpAnswer::read(u"getStatus"_s, status, body);
    const QJsonObject reply = QJsonDocument::fromJson(read.toJson(7)).object();
    const QJsonValue error = reply.value("error"_L1);
    const bool whole = read.ok ? reply.value("result"_L1).isObject()
                               : error["code"_L1].isString() && !error["message"_L1].toString().isEmpty();
    if (!whole || reply.size() != 3 || read.ok != (status / 100 == 2)) {
        std::abort();
    }
    return 0;
}
