// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/manager/AnswerPoll.h"
#include "ui/manager/PanelBase.h"

class QPushButton;

namespace tallyforge {

class ReadOnlyBox;

/// What the device reports about itself, the scoreboard's values as they arrive, and the device's
/// own test of its network.
class StatusPanel final : public PanelBase
{
    Q_OBJECT

public:
    StatusPanel(DeviceSession *session, QWidget *parent);

    void refresh() override;

private:
    AnswerPoll::Calls networkTestCalls();

    ReadOnlyBox *m_device = nullptr;
    ReadOnlyBox *m_scoreboard = nullptr;
    ReadOnlyBox *m_test = nullptr;
    QPushButton *m_testButton = nullptr;
    AnswerPoll *const m_networkTest;
};

} // namespace tallyforge
