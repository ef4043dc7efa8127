// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The lists that the portal answers with.

#include "portal/PortalClient.h"

#include <QJsonDocument>

#include <cstdlib>

using namespace Qt::StringLiterals;

using namespace tallyforge;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonObject body =
        QJsonDocument::fromJson(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size))).object();
    for (const PortalDevice &device : PortalClient::parseDevices(body)) {
        if (device.deviceId.isEmpty() || device.displayName().isEmpty()) {
            std::abort();
        }
    }
    for (const GraphicsOutput &output : PortalClient::parseOutputs(body, u"https://p"_s)) {
        if (output.id.isEmpty() || output.name.isEmpty() || output.shareToken.isEmpty()) {
            std::abort();
        }
    }
    return 0;
}
