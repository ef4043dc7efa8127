// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/manager/AnswerPoll.h"
#include "ui/manager/PanelBase.h"

class QPushButton;

namespace tallyforge {

class UpdateGroup;

/// Checks for new firmware of the device and installs it, and updates the device's wireless chip
/// from an image that the device holds already. An update goes on in the device, whatever becomes
/// of the panel.
class UpdatesPanel final : public PanelBase
{
    Q_OBJECT

public:
    UpdatesPanel(DeviceSession *session, QWidget *parent);

    void refresh() override;

private:
    void addFirmware(QBoxLayout *column);
    void addChip(QBoxLayout *column);
    void check();
    void onCheck(const QJsonObject &answer);
    void install();
    bool takeFirmware(const QJsonObject &progress);
    void updateChip();
    bool takeChip(const QJsonObject &progress);

    UpdateGroup *m_firmware = nullptr;
    QPushButton *m_check = nullptr;
    QPushButton *m_install = nullptr;
    UpdateGroup *m_chip = nullptr;
    QPushButton *m_updateChip = nullptr;
    Generation m_checked; // begins with each check, and ends with an installation
    QString m_offered;    // the newest version that a check has found, empty for none
    AnswerPoll *m_pollFirmware = nullptr;
    AnswerPoll *m_pollChip = nullptr;
};

} // namespace tallyforge
