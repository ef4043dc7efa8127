// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A link that polls and sends nothing anywhere: each effect comes within the call that causes it.

#include "tests/device/SessionContract.h"
#include "tests/support/ScriptedLink.h"

#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

class SessionOverFake : public SessionContract
{
    Q_OBJECT

    DeviceLink *makeLink() override { return m_link = new ScriptedLink(m_device); }
    void unplug() override { m_link->unplug(); }
    void plugIn() override { m_link->plugged = true; }
    [[nodiscard]] bool answersAtOnce() const override { return true; }

    ScriptedLink *m_link = nullptr; // the session's
};

QTEST_GUILESS_MAIN(SessionOverFake)
#include "tst_session_over_fake.moc"
