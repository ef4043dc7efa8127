// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QHash>
#include <QLabel>
#include <QLatin1StringView>
#include <QString>

namespace tallyforge {

/// A label for text of any origin: wrapped, shown as it is, and never in the way of a narrow page,
/// however long its words are. Tone and size are those of the page's PageStyle, which goes with
/// every theme of OBS; on a page without one they have no effect.
class ThemedLabel : public QLabel
{
    Q_OBJECT

public:
    enum class Tone {
        Normal,
        Quiet,
    };
    enum class Size { // in shares of the page's
        Normal,
        Small, // 0.92
        Title, // 1.15
        Large, // 1.25
    };

    explicit ThemedLabel(QWidget *parent, Tone tone = Tone::Normal, Size size = Size::Normal);

    /// Sets the text and shows the label if there is any, so that an empty one leaves no gap.
    void showText(const QString &text);
    /// Whether the text tells of an error, which is shown in red.
    void setError(bool isError);

    [[nodiscard]] int heightForWidth(int width) const override;

    /// The class by which a style sheet finds the labels of a tone or a size; empty for Normal.
    [[nodiscard]] static QLatin1StringView className(Tone tone);
    [[nodiscard]] static QLatin1StringView className(Size size);

protected:
    bool event(QEvent *event) override;

private:
    // Layouts ask thirty times for the same height while a page is made.
    mutable QHash<int, int> m_heights; // by width, of m_measured
    mutable QString m_measured;
};

/// A label for secondary text: small, in a quiet colour, and selectable.
[[nodiscard]] ThemedLabel *hint(const QString &text, QWidget *parent);
void makeBold(QLabel *label);

} // namespace tallyforge
