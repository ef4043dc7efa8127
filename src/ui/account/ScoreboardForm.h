// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QWidget>

class QComboBox;
class QFormLayout;
class QJsonObject;

namespace tallyforge {

/// Lets the user choose among the scoreboards of the catalog: the manufacturer decides what the
/// other boxes offer.
class ScoreboardForm final : public QWidget
{
    Q_OBJECT

public:
    explicit ScoreboardForm(QWidget *parent);

    /// The choice as the portal takes it, in the catalog's keys.
    [[nodiscard]] QJsonObject config() const;

private:
    QComboBox *addBox(QFormLayout *rows, const QString &name, const QString &label);
    void onManufacturerChanged();

    QComboBox *m_manufacturer;
    QComboBox *m_model;
    QComboBox *m_sport;
    QComboBox *m_inputType;
};

} // namespace tallyforge
