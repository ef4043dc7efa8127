// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/manager/PanelBase.h"

namespace tallyforge {

class LogBox;

/// The tools for the rare cases: a restart, the device's log, and the ways back to the factory
/// state.
class AdvancedPanel final : public PanelBase
{
    Q_OBJECT

public:
    AdvancedPanel(DeviceSession *session, QWidget *parent);

private:
    void addDanger(QBoxLayout *column);
    void askToRestart();
    void restart();
    void readLog();
    void askToResetPassword();
    void askToReset();
    /// Calls a method that wants to be sure, and shows done or the error.
    void callConfirmed(const QString &method, const QString &done);

    LogBox *m_log = nullptr;
};

} // namespace tallyforge
