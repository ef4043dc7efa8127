// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <functional>

namespace tallyforge {

/// Work that comes from outside in any amount and must not hold the event loop: it is done in
/// steps, for two milliseconds in each turn of the loop, and goes on in the next turn. Small work
/// is done at once.
class SlicedWork final : public QObject
{
    Q_OBJECT

public:
    /// step does a small part of the work and returns false when none is left. It may call go(),
    /// and may delete this object.
    explicit SlicedWork(std::function<bool()> step, QObject *parent = nullptr);

    /// To be called whenever work has come. Returns when it is done, or when this turn's share of
    /// time is used up.
    void go();

private:
    void onNextTurn();

    const std::function<bool()> m_step;
    QTimer m_nextTurn; // runs from the first work of a turn
    QDeadlineTimer m_share;
    bool m_isWorking = false;
    bool m_isCalled = false; // by the present step
    bool m_isLeft = false;
};

} // namespace tallyforge
