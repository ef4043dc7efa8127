// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "tests/dock_finder/Items.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tallyforge::test {

QJsonArray onScreen(const QWidget *widget, const QRect &area)
{
    const qreal scale = widget->devicePixelRatioF();
    const QPointF corner = widget->mapToGlobal(QPointF(area.topLeft())) * scale;
    return {int(std::lround(corner.x())), int(std::lround(corner.y())), int(std::lround(area.width() * scale)),
            int(std::lround(area.height() * scale))};
}

template <typename Menu> void Items::addActions(const Menu *menu)
{
    for (QAction *action : menu->actions()) {
        add(action->text().remove(u'&'), menu->actionGeometry(action),
            {{u"enabled"_s, action->isEnabled()}, {u"checked"_s, action->isChecked()}});
    }
}

Items::Items(QWidget *widget)
    : m_widget(widget)
{
    if (const auto *view = qobject_cast<QAbstractItemView *>(widget); view && view->model()) {
        addRows(*view);
    } else if (const auto *box = qobject_cast<QComboBox *>(widget)) {
        for (int index = 0; index < box->count(); ++index) {
            add(box->itemText(index), {});
        }
    } else if (const auto *tabs = qobject_cast<QTabBar *>(widget)) {
        for (int index = 0; index < tabs->count(); ++index) {
            add(tabs->tabText(index).remove(u'&'), tabs->tabRect(index));
        }
    } else if (const auto *menu = qobject_cast<QMenu *>(widget)) {
        addActions(menu);
    } else if (const auto *bar = qobject_cast<QMenuBar *>(widget)) {
        addActions(bar);
    }
}

void Items::add(const QString &text, const QRect &area, const QJsonObject &more)
{
    QJsonObject item = more;
    item.insert(u"text"_s, text);
    item.insert(u"rect"_s, onScreen(m_widget, area));
    m_all.append(item);
}

// Those at the top of a tree.
void Items::addRows(const QAbstractItemView &view)
{
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        const QModelIndex index = view.model()->index(row, 0);
        QJsonObject more{{u"selected"_s, view.selectionModel()->isSelected(index)}};
        if (const QVariant checked = index.data(Qt::CheckStateRole); checked.isValid()) {
            more.insert(u"checked"_s, checked.toInt() == Qt::Checked);
        }
        QJsonArray cells;
        for (int column = 0; column < view.model()->columnCount(); ++column) {
            cells.append(index.siblingAtColumn(column).data().toString());
        }
        more.insert(u"cells"_s, cells);
        const QRect area = view.visualRect(index);
        add(index.data().toString(), {view.viewport()->mapTo(m_widget, area.topLeft()), area.size()}, more);
    }
}

} // namespace tallyforge::test
