// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/StatePoll.h"

#include "device/RpcClient.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds poll{1000}; // between two requests
constexpr int answerLimitMs = 6000;
constexpr int timeoutsUntilSilent = 3;

} // namespace

StatePoll::StatePoll(RpcClient *rpc, QObject *parent)
    : QObject(parent)
    , m_rpc(rpc)
{
    m_timer.setInterval(poll);
    connect(&m_timer, &QTimer::timeout, this, &StatePoll::ask);
}

void StatePoll::stop()
{
    m_generation.next();
    m_timer.stop();
    m_inFlight = false;
    m_timeouts = 0;
}

void StatePoll::ask()
{
    // Never behind the user's own operations.
    if (m_inFlight || m_rpc->pending() > 0) {
        return;
    }
    m_inFlight = true;
    m_rpc->call(u"getState"_s, {},
                m_generation.guard([this](const RpcResult &result) { onReply(result); }),
                answerLimitMs);
}

void StatePoll::onReply(const RpcResult &result)
{
    m_inFlight = false;
    if (result.ok) {
        m_timeouts = 0;
        Q_EMIT envelope(result.result);
    } else if (result.errorCode == "unauthorized"_L1) {
        Q_EMIT unauthorized();
    } else if (result.errorCode == "timeout"_L1 && ++m_timeouts >= timeoutsUntilSilent) {
        m_timeouts = 0;
        Q_EMIT silent();
    }
}

} // namespace tallyforge
