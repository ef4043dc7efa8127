// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QLabel>
#include <QString>

namespace tallyforge {

/// A label for text of any origin: wrapped, shown as it is, and never in the way of a narrow dock,
/// however long its words are. Its size is a share of what stands around it, and so is the colour
/// of quiet text, in every theme of OBS.
class ThemedLabel final : public QLabel
{
    Q_OBJECT

public:
    enum class Tone {
        Normal,
        Quiet,
        Error,
    };

    explicit ThemedLabel(const QString &text = {}, Tone tone = Tone::Normal, qreal scale = 1);

    void setTone(Tone tone);
    /// Sets the text and shows the label if there is any, so that an empty one leaves no gap.
    void showText(const QString &text);

protected:
    bool event(QEvent *event) override;

private:
    void adapt();

    Tone m_tone;
    const qreal m_scale; // of the surroundings' size
};

/// A label for secondary text: small, in a quiet colour, and selectable.
[[nodiscard]] ThemedLabel *hint(const QString &text = {});
void makeBold(QLabel *label);

} // namespace tallyforge
