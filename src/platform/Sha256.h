// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>

#include <memory>

namespace tallyforge::platform {

/// A SHA-256 sum by the system's own library, which uses the processor's instructions for it: Qt's
/// takes ten times as long.
class Sha256
{
public:
    Sha256();
    ~Sha256();
    Q_DISABLE_COPY_MOVE(Sha256)

    void addData(QByteArrayView data);
    /// The sum's 32 bytes, once and at the end; empty if the library refused its service.
    [[nodiscard]] QByteArray result();

private:
    struct Context;
    const std::unique_ptr<Context> m_context;
};

} // namespace tallyforge::platform
