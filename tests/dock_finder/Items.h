// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QRect>
#include <QString>
#include <QWidget>

class QAbstractItemView;

namespace tallyforge::test {

/// An area of a widget in pixels of the screen: from the left, from the top, width, height.
QJsonArray onScreen(const QWidget *widget, const QRect &area);

/// The rows of a view, the entries of a combo box or a menu, the tabs of a bar.
class Items
{
public:
    explicit Items(QWidget *widget);

    [[nodiscard]] const QJsonArray &all() const { return m_all; }

private:
    void add(const QString &text, const QRect &area, const QJsonObject &more = {});
    void addRows(const QAbstractItemView &view);
    template <typename Menu> void addActions(const Menu *menu);

    QWidget *m_widget;
    QJsonArray m_all;
};

} // namespace tallyforge::test
