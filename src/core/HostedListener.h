// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QList>
#include <QTcpServer>

#include <optional>

namespace tallyforge {

/// Accepts the connections of other programs and keeps them until the server has time for them.
/// Main thread.
class HostedListener final : public QTcpServer
{
    Q_OBJECT

public:
    HostedListener();
    ~HostedListener() override;

    /// The descriptor of the connection that came first, which the caller then owns.
    [[nodiscard]] std::optional<qintptr> take();
    /// Listens no more, and ends the connections that nobody has taken.
    void stop();

Q_SIGNALS:
    /// take() gives a connection.
    void arrived();

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    QList<qintptr> m_arrived;
};

} // namespace tallyforge
