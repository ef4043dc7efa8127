// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "sources/ListRefresh.h"

#include "plugin/App.h"
#include "ui/widgets/HeldCloses.h"

#include <QElapsedTimer>
#include <QPointer>

#include <chrono>

namespace tallyforge {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds refreshWait = 8s;

// The user's presses are kept back in the course of a wait and delivered right after it. A wait of
// this length is one in which a user presses again.
constexpr std::chrono::milliseconds noticeableWait = 1s;
constexpr std::chrono::milliseconds pressDelivery = 300ms;

bool waiting = false;
QElapsedTimer sinceNoticeableWait; // not valid after a shorter one

void waitForListing(App &app)
{
    QElapsedTimer wait;
    wait.start();
    waiting = true;
    {
        const HeldCloses held([lists = QPointer(&app.lists())] {
            if (lists) {
                lists->endWait();
            }
        });
        app.refreshOutputsBlocking(int(refreshWait.count()));
    }
    waiting = false;
    sinceNoticeableWait.invalidate();
    if (wait.durationElapsed() >= noticeableWait) {
        sinceNoticeableWait.start();
    }
}

} // namespace

ListRefresh refreshGraphicsList(App &app)
{
    if (waiting ||
        (sinceNoticeableWait.isValid() && sinceNoticeableWait.durationElapsed() < pressDelivery)) {
        return ListRefresh::Dropped;
    }
    const bool willWait = app.portal().signedIn();
    waitForListing(app);
    return willWait ? ListRefresh::AfterWait : ListRefresh::AtOnce;
}

} // namespace tallyforge
