// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceTypes.h"
#include "ui/manager/PanelBase.h"

#include <functional>

class QComboBox;
class QPushButton;

namespace tallyforge {

/// Lets the user tell a device which scoreboard it is wired to, out of the device's own list.
class ControllerPanel final : public PanelBase
{
    Q_OBJECT

public:
    ControllerPanel(DeviceSession *session, QWidget *parent);

    void refresh() override;
    /// Loads the device's list and the scoreboard that it is set to.
    void load();
    void save();

Q_SIGNALS:
    void saved();

private:
    using Text = std::function<QString(const QString &key)>;
    using Filter = std::function<bool(const ControllerChoice &choice)>;

    void fillBox(QComboBox *box, QString ControllerChoice::*key, const Filter &filter,
                 const Text &labelOf, const QString &wanted);
    // Each fills the boxes below it as well.
    void fillMakers(const ControllerChoice &wanted);
    void fillModels(const ControllerChoice &wanted);
    void fillSports(const ControllerChoice &wanted);
    void fillInputs(const ControllerChoice &wanted);
    void onList(bool ok, const QList<ControllerChoice> &choices, const QString &error);
    void onConfig(const QJsonObject &config);
    [[nodiscard]] ControllerChoice picked() const;

    QComboBox *m_makerBox;
    QComboBox *m_modelBox;
    QComboBox *m_sportBox;
    QComboBox *m_inputBox;
    QPushButton *m_saveButton;
    QList<ControllerChoice> m_choices; // as last loaded
};

} // namespace tallyforge
