// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QFrame>
#include <QTimer>

class QLabel;

namespace tallyforge {

/// Tells that the device is restarting, counts the seconds until it should be back, and stays.
class RestartBanner final : public QFrame
{
    Q_OBJECT

public:
    /// Hidden until it is started.
    explicit RestartBanner(QWidget *parent);

    /// headline says why; note is plain text below the countdown, perhaps of several lines.
    void start(const QString &headline, const QString &note);

private:
    void tick();
    void showTexts();

    QTimer m_timer;
    int m_seconds = 0; // left
    QString m_headline;
    QString m_note;
    QLabel *m_text;
    QLabel *m_noteLabel;
};

} // namespace tallyforge
