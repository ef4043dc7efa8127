// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceLink.h"
#include "tests/support/FakeTransport.h"

namespace tallyforge::test {

/// A link in the test's hands; open() opens it at once, unless opensAtOnce is false.
class FakeLink final : public DeviceLink
{
public:
    [[nodiscard]] QString kind() const override { return QStringLiteral("usb"); }
    [[nodiscard]] QString address() const override { return {}; }
    void open() override
    {
        ++opens;
        carrier.open = opensAtOnce;
        if (opensAtOnce) {
            Q_EMIT opened(info);
        }
    }
    void close() override
    {
        ++closes;
        carrier.open = false;
    }
    [[nodiscard]] RpcTransport *transport() override { return &carrier; }
    [[nodiscard]] bool pollsState() const override { return polls; }
    void lose(const QString &reason)
    {
        carrier.open = false;
        Q_EMIT closed(reason);
    }

    FakeTransport carrier;
    QJsonObject info;
    bool opensAtOnce = true;
    bool polls = false;
    int opens = 0;
    int closes = 0;
};

} // namespace tallyforge::test
