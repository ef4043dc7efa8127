// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/Group.h"

#include <QPointer>

class QPushButton;

namespace tallyforge {

class App;
class ThemedLabel;

/// Opens the dialogs about devices, and tells of the USB devices that use this computer's internet.
class DevicesGroup final : public Group
{
    Q_OBJECT

public:
    /// app isn't owned and must outlive the group. The dialogs become children of dialogParent.
    DevicesGroup(App &app, QWidget *dialogParent, QWidget *parent);

    void setSignedIn(bool signedIn);
    /// The account's device that can be managed, empty for none.
    void setDevice(const QString &id);
    void refreshRelays();

private:
    void addButtons();
    void openSetup();
    void openManage();

    App &m_app;
    QWidget *const m_dialogParent;
    QPushButton *m_manage = nullptr;
    ThemedLabel *m_relays = nullptr;
    QPushButton *m_stopRelays = nullptr;
    QPointer<QWidget> m_setupDialog; // while it is open
    QString m_device;
};

} // namespace tallyforge
