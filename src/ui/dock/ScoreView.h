// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QWidget>

namespace tallyforge {

class ThemedLabel;

/// Shows the score line, large and bold. The line may change many times a second: the page is laid
/// out anew only when it takes another number of lines, not for each of its texts.
class ScoreView final : public QWidget
{
    Q_OBJECT

public:
    explicit ScoreView(QWidget *parent);

    /// Plain text; the view is hidden while there is none.
    void showText(const QString &text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();

    // In no layout, so that its changes of size end here.
    ThemedLabel *const m_label; // child
};

} // namespace tallyforge
