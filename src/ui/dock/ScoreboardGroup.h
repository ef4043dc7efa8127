// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/Group.h"

class QCheckBox;
class QComboBox;

namespace tallyforge {

class App;
class ScoreView;
class ThemedLabel;

/// Chooses the scoreboard that is followed, and the way to it, and shows its values.
class ScoreboardGroup final : public Group
{
    Q_OBJECT

public:
    /// app isn't owned and must outlive the group.
    explicit ScoreboardGroup(App &app, QWidget *parent);

    /// The device that is shown in the list, empty when the account has none.
    [[nodiscard]] QString device() const;

    void setSignedIn(bool signedIn);
    void refreshDevices();
    void refreshStatus();
    void refreshScore();

Q_SIGNALS:
    /// Another device, or none, is shown in the list.
    void deviceChanged(const QString &id);

private:
    void listDevices();
    void showFollowedDevice();
    void onActivated();
    void refreshLan();
    void onLanToggled(bool checked);

    App &m_app;
    QComboBox *m_devices = nullptr;
    QCheckBox *m_lan = nullptr;
    ThemedLabel *m_status = nullptr;
    ScoreView *m_score = nullptr;
    bool m_refreshingLan = false; // then the box wasn't toggled by the user
};

} // namespace tallyforge
