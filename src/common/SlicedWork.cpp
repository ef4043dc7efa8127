// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "common/SlicedWork.h"

#include <QPointer>

#include <chrono>
#include <utility>

namespace tallyforge {

namespace {

// A step that begins within it may go on beyond. A user's click may wait for two turns.
constexpr std::chrono::milliseconds share{2};

} // namespace

SlicedWork::SlicedWork(std::function<bool()> step, QObject *parent)
    : QObject(parent)
    , m_step(std::move(step))
{
    m_nextTurn.setSingleShot(true);
    connect(&m_nextTurn, &QTimer::timeout, this, &SlicedWork::onNextTurn);
}

void SlicedWork::go()
{
    if (m_isWorking) {
        m_isCalled = true; // the present step is followed by another
        return;
    }
    if (!m_nextTurn.isActive()) {
        m_nextTurn.start(0);
        m_share.setPreciseRemainingTime(0, std::chrono::nanoseconds(share).count());
    }
    const QPointer<SlicedWork> self = this;
    const std::function<bool()> step = m_step; // outlives this object
    m_isWorking = true;
    m_isLeft = true;
    while (m_isLeft && !m_share.hasExpired()) {
        m_isCalled = false;
        const bool isLeft = step();
        if (!self) {
            return;
        }
        m_isLeft = isLeft || m_isCalled;
    }
    m_isWorking = false;
    if (m_isLeft && !m_nextTurn.isActive()) {
        m_nextTurn.start(0); // it has fired in an event loop of a step's own
    }
}

void SlicedWork::onNextTurn()
{
    if (m_isLeft) {
        go();
    }
}

} // namespace tallyforge
