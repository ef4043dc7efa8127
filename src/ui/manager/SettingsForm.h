// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QList>
#include <QVariant>
#include <QWidget>

class QCheckBox;
class QFormLayout;
class QSpinBox;

namespace tallyforge {

/// Inputs for some of a device's settings, one below the other. Each belongs to one key. A key that
/// the device doesn't tell, or tells as another type, counts as the input's fallback.
class SettingsForm final : public QWidget
{
    Q_OBJECT

public:
    enum class Edits { // what the user has changed since the settings were loaded or saved
        Keep,
        Drop,
    };
    struct Range
    {
        int least;
        int most;
    };

    explicit SettingsForm(QWidget *parent);

    QCheckBox *addCheck(QLatin1StringView key, const QString &text, bool fallback);
    QSpinBox *addNumber(QLatin1StringView key, const QString &label, Range range, int fallback);
    void addText(QLatin1StringView key, const QString &label, const QString &placeholder);
    /// The value unchanged is shown blank; digits is the least number of digits of any other.
    void addHex(QLatin1StringView key, const QString &label, const QString &placeholder,
                int unchanged, int digits);
    /// Any input with a user property of the fallback's type: bool, int or string. It isn't placed.
    void bind(QLatin1StringView key, QWidget *input, const QVariant &fallback);

    void load(const QJsonObject &settings, Edits edits);
    /// What the device is to be sent. Text loses the blanks around it.
    [[nodiscard]] QJsonObject values() const;
    /// The present values go to the device; once it has taken them they no longer count as edits.
    void markSent();
    void markSaved();

    /// The object name of the input for a key.
    [[nodiscard]] static QString inputName(QLatin1StringView key);

private:
    struct Input
    {
        QLatin1StringView key;
        QWidget *widget;
        QVariant fallback;
        QVariant known; // the value that the device is known to have
        QVariant sent;
    };

    void addRow(const QString &label, QWidget *input);

    QFormLayout *m_rows;
    QList<Input> m_inputs;
};

} // namespace tallyforge
