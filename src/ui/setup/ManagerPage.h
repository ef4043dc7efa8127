// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/setup/SetupPage.h"

#include <QPointer>

class QLabel;

namespace tallyforge {

class DeviceManager;
class DeviceSession;
class SettingsStore;

/// Everything that can be done with the device: its manager below a few buttons.
class ManagerPage final : public SetupPage
{
    Q_OBJECT

public:
    /// The settings aren't owned and must outlive the page.
    ManagerPage(SettingsStore &settings, QWidget *parent);

    /// Makes a manager that install() is to take, unless there is one. The session isn't owned.
    void prepare(DeviceSession *session);
    /// Makes the manager anew, on its first tab. The session isn't owned.
    DeviceManager *install(DeviceSession *session, const QString &title);
    /// The device has another name from now on.
    void setDevice(const QString &title);
    /// Loads the tab in view anew.
    void refresh();
    /// Takes the manager away, because its session goes.
    void dropManager();

Q_SIGNALS:
    void useRequested();
    void disconnectRequested();

private:
    SettingsStore &m_settings;
    QLabel *m_title = nullptr;
    QVBoxLayout *m_place = nullptr;
    QPointer<DeviceManager> m_manager;
    bool m_isPrepared = false; // and has never been in view
};

} // namespace tallyforge
