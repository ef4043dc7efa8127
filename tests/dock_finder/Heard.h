// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QEvent>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QWidget>

namespace tallyforge::test {

/// The same for as long as the widget lives.
inline QString idOf(const QWidget *widget)
{
    return QString::number(quintptr(widget), 16);
}

/// The events of the mouse and the keyboard that have arrived so far.
class Heard
{
public:
    void take(QObject *receiver, const QEvent &event);

    [[nodiscard]] QJsonObject told() const;

private:
    int m_clicks = 0;
    int m_wheels = 0;
    int m_keys = 0;       // without Ctrl and the like
    QJsonArray m_pressed; // the widgets under the last click, and those around them
};

} // namespace tallyforge::test
