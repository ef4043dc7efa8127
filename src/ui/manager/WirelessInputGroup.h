// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/manager/SettingsForm.h"
#include "ui/widgets/Group.h"

namespace tallyforge {

/// The settings of the radio by which a device hears its scoreboard. There are two kinds of radio;
/// the scoreboard's maker decides which of them it is. Hidden for a scoreboard on a cable.
class WirelessInputGroup final : public Group
{
    Q_OBJECT

public:
    explicit WirelessInputGroup(QWidget *parent);

    /// Shows the radio for a scoreboard, with what the settings say about it.
    void load(const QString &maker, const QString &connection, const QJsonObject &settings,
              SettingsForm::Edits edits);
    /// The radio's settings for the device, none where there is no radio.
    [[nodiscard]] QJsonObject values() const;
    void markSent();
    void markSaved();

private:
    void addRm024Form();
    void addXbeeForm();

    SettingsForm *m_rm024;
    SettingsForm *m_xbee;
    SettingsForm *m_used = nullptr;
    SettingsForm *m_sent = nullptr; // the one that was in use then
};

} // namespace tallyforge
