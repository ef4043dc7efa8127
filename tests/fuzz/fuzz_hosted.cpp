// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// What another program asks of the server: lines, requests, and their words in a reply.

#include "common/JsonText.h"
#include "common/LineBuffer.h"
#include "core/HostedRequest.h"
#include "tests/fuzz/Harness.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace tallyforge;
using namespace tallyforge::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    LineBuffer buffer;
    buffer.append(bytesOf(data, size));
    while (const std::optional<QByteArray> line = buffer.takeLine()) {
        const std::optional<HostedRequest> request = parseHostedRequest(*line);
        require(request || line->startsWith('{'));
        if (!request) {
            continue;
        }
        require(line->startsWith('{') || (request->body.isEmpty() && request->op == request->op.trimmed()));
        QByteArray array("[");
        appendJsonString(array, request->op);
        require(array + ']' == QJsonDocument(QJsonArray{request->op}).toJson(QJsonDocument::Compact));
    }
    return 0;
}
