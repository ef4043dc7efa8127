// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/HostedListener.h"

#include "platform/StreamSocket.h"

namespace tallyforge {

namespace {

// Programs that all come at once, as after a change of the port, are let in without a second try.
constexpr int backlog = 1024;
// Qt would accept all programs that have come in one turn of the event loop. At the limit of
// connections that wait, it stops.
constexpr int acceptedAtOnce = 16;
constexpr int usualLimit = 30;

} // namespace

HostedListener::HostedListener()
{
    setListenBacklogSize(backlog);
    setMaxPendingConnections(usualLimit);
}

HostedListener::~HostedListener()
{
    stop();
}

void HostedListener::incomingConnection(qintptr descriptor)
{
    m_arrived.append(descriptor);
    if (m_arrived.size() >= acceptedAtOnce) {
        setMaxPendingConnections(0);
    }
    Q_EMIT arrived();
}

std::optional<qintptr> HostedListener::take()
{
    if (m_arrived.isEmpty()) {
        return std::nullopt;
    }
    const qintptr descriptor = m_arrived.takeFirst();
    if (m_arrived.isEmpty() && maxPendingConnections() == 0) {
        setMaxPendingConnections(usualLimit);
        resumeAccepting();
    }
    return descriptor;
}

void HostedListener::stop()
{
    close();
    while (!m_arrived.isEmpty()) {
        platform::StreamSocket(m_arrived.takeFirst()).close();
    }
    setMaxPendingConnections(usualLimit);
}

} // namespace tallyforge
