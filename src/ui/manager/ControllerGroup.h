// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/Group.h"

#include <QJsonArray>
#include <QJsonObject>

#include <array>
#include <optional>

class QComboBox;

namespace tallyforge {

/// Picks the scoreboard that a device is wired to, out of the device's own list and in the device's
/// own words. Each of the four boxes narrows those below it.
class ControllerGroup final : public Group
{
    Q_OBJECT

public:
    explicit ControllerGroup(QWidget *parent);

    /// controllers is the device's list, config the scoreboard that it is set to. A choice of the
    /// user's that hasn't been saved stays, as far as the list has it.
    void load(const QJsonArray &controllers, const QJsonObject &config);
    /// The four settings as they stand in the boxes, each empty where nothing can be chosen.
    [[nodiscard]] QJsonObject choice() const;
    [[nodiscard]] bool isComplete() const;
    [[nodiscard]] QString maker() const;
    [[nodiscard]] QString connection() const;
    /// The device has taken the choice among these settings.
    void markSaved(const QJsonObject &settings);

Q_SIGNALS:
    /// The user has chosen in one of the boxes.
    void picked();

private:
    void addBoxes();
    void fill(std::size_t first, const QJsonObject &preferred);
    void onActivated(std::size_t box);

    std::array<QComboBox *, 4> m_boxes{};
    QJsonArray m_controllers;
    QJsonObject m_device;                // the choice that the device is known to have
    std::optional<QJsonObject> m_edited; // the user's, where it differs from that
};

} // namespace tallyforge
