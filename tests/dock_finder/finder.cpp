// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Tells a program that uses the mouse and the keyboard what OBS's windows show, where, and which of
// its clicks and keys have arrived. It only looks. Each connection to the socket that
// DOCK_FINDER_SOCKET names sends one line, a JSON object: "root" is the object name of a widget, or
// "*" for all windows; with "measure" each widget also tells the least size that it needs, for which
// Qt may redraw it. The answer holds "widgets", the visible ones from the root on down, and "heard".

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QLocalServer>
#include <QLocalSocket>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QWidget>

#include <obs-module.h>

#include <cmath>

OBS_DECLARE_MODULE()

using namespace Qt::StringLiterals;

namespace {

// In pixels of the screen.
QJsonArray onScreen(const QWidget *widget, const QRect &area)
{
    const qreal scale = widget->devicePixelRatioF();
    const QPointF corner = widget->mapToGlobal(QPointF(area.topLeft())) * scale;
    return {int(std::lround(corner.x())), int(std::lround(corner.y())), int(std::lround(area.width() * scale)),
            int(std::lround(area.height() * scale))};
}

// The rows of a view, the entries of a combo box or a menu, the tabs of a bar.
class Items
{
public:
    explicit Items(QWidget *widget)
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

    [[nodiscard]] const QJsonArray &all() const { return m_all; }

private:
    void add(const QString &text, const QRect &area, const QJsonObject &more = {})
    {
        QJsonObject item = more;
        item.insert(u"text"_s, text);
        item.insert(u"rect"_s, onScreen(m_widget, area));
        m_all.append(item);
    }

    // Those at the top of a tree.
    void addRows(const QAbstractItemView &view)
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

    template <typename Menu> void addActions(const Menu *menu)
    {
        for (QAction *action : menu->actions()) {
            add(action->text().remove(u'&'), menu->actionGeometry(action),
                {{u"enabled"_s, action->isEnabled()}, {u"checked"_s, action->isChecked()}});
        }
    }

    QWidget *m_widget;
    QJsonArray m_all;
};

QString idOf(const QWidget *widget)
{
    return QString::number(quintptr(widget), 16);
}

// Where the wheel scrolls a widget; null if nothing does.
const QWidget *viewportOf(const QWidget *widget)
{
    for (const QWidget *at = widget->parentWidget(); at && !widget->isWindow(); at = at->parentWidget()) {
        if (const auto *area = qobject_cast<const QAbstractScrollArea *>(at)) {
            return area->viewport();
        }
    }
    return nullptr;
}

bool isModifier(const QKeyEvent &event)
{
    return event.key() >= Qt::Key_Shift && event.key() <= Qt::Key_Alt;
}

// What has arrived from the mouse and the keyboard so far.
class Heard
{
public:
    void take(QObject *receiver, const QEvent &event)
    {
        if (receiver->isWindowType()) { // first, and once for each event
            const QEvent::Type type = event.type();
            m_clicks += int(type == QEvent::MouseButtonRelease);
            m_wheels += int(type == QEvent::Wheel);
            // A shortcut's key comes as nothing else.
            m_keys += int(type == QEvent::ShortcutOverride && !isModifier(static_cast<const QKeyEvent &>(event)));
            if (type == QEvent::MouseButtonPress) {
                m_pressed = {};
            }
        } else if (event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick) {
            for (auto *widget = qobject_cast<QWidget *>(receiver); widget; widget = widget->parentWidget()) {
                m_pressed.append(idOf(widget));
            }
        }
    }

    [[nodiscard]] QJsonObject told() const
    {
        return {{u"clicks"_s, m_clicks},
                {u"wheels"_s, m_wheels},
                {u"keys"_s, m_keys},
                {u"pressed"_s, m_pressed},
                {u"active"_s, QApplication::activeWindow() != nullptr}};
    }

private:
    int m_clicks = 0;
    int m_wheels = 0;
    int m_keys = 0;       // without Ctrl and the like
    QJsonArray m_pressed; // the widgets under the last click, and those around them
};

class Finder final : public QObject
{
    Q_OBJECT

public:
    Finder()
    {
        qApp->installEventFilter(this);
        m_server.listen(qEnvironmentVariable("DOCK_FINDER_SOCKET"));
        connect(&m_server, &QLocalServer::newConnection, this, &Finder::takeConnection);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            if (!m_paints.contains(watched)) {
                connect(watched, &QObject::destroyed, this, [this, watched] { m_paints.remove(watched); });
            }
            ++m_paints[watched];
        } else if (event->spontaneous()) {
            m_heard.take(watched, *event);
        }
        return false;
    }

private:
    void takeConnection()
    {
        QLocalSocket *client = m_server.nextPendingConnection();
        connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
        connect(client, &QLocalSocket::readyRead, this, [this, client] {
            if (client->canReadLine()) {
                const QJsonObject wish = QJsonDocument::fromJson(client->readLine()).object();
                m_measures = wish[u"measure"_s].toBool();
                const QJsonObject answer{{u"widgets"_s, look(wish[u"root"_s].toString())},
                                         {u"heard"_s, m_heard.told()}};
                client->write(QJsonDocument(answer).toJson(QJsonDocument::Compact));
                client->disconnectFromServer();
            }
        });
    }

    QJsonArray look(const QString &root) const
    {
        QJsonArray found;
        const QWidgetList widgets = QApplication::allWidgets();
        for (QWidget *widget : widgets) {
            if (root == u"*"_s ? widget->isWindow() : widget->objectName() == root) {
                describeTree(widget, found);
            }
        }
        return found;
    }

    void describeTree(QWidget *widget, QJsonArray &found) const
    {
        if (!widget->isVisible()) {
            return;
        }
        found.append(describe(widget));
        const QObjectList children = widget->children();
        for (QObject *child : children) {
            if (auto *below = qobject_cast<QWidget *>(child); below && !below->isWindow()) {
                describeTree(below, found);
            }
        }
    }

    QJsonObject describe(QWidget *widget) const
    {
        QJsonObject line{
            {u"id"_s, idOf(widget)},
            {u"name"_s, widget->objectName()},
            {u"class"_s, QLatin1StringView(widget->metaObject()->className())},
            {u"window"_s, widget->window()->windowTitle()},
            {u"window_id"_s, qint64(widget->window()->effectiveWinId())},
            {u"rect"_s, onScreen(widget, widget->rect())},
            {u"seen"_s, onScreen(widget, widget->visibleRegion().boundingRect())},
            {u"enabled"_s, widget->isEnabled()},
            {u"focus"_s, widget->hasFocus()},
            {u"paints"_s, m_paints.value(widget)},
        };
        if (m_measures) {
            const QSize least = widget->minimumSizeHint();
            const int height = widget->hasHeightForWidth() ? widget->heightForWidth(widget->width()) : least.height();
            line.insert(u"least"_s, onScreen(widget, {0, 0, least.width(), height}));
        }
        if (const QWidget *viewport = viewportOf(widget)) {
            line.insert(u"viewport"_s, onScreen(viewport, viewport->visibleRegion().boundingRect()));
        }
        if (const QJsonArray items = Items(widget).all(); !items.isEmpty()) {
            line.insert(u"items"_s, items);
        }
        for (const char *name :
             {"text", "title", "plainText", "currentText", "currentIndex", "placeholderText", "accessibleName",
              "toolTip", "checked", "value", "echoMode", "readOnly", "modal", "focusPolicy", "layoutDirection"}) {
            if (const QVariant value = widget->property(name); value.isValid()) {
                line.insert(QLatin1StringView(name), QJsonValue::fromVariant(value));
            }
        }
        return line;
    }

    QLocalServer m_server;
    Heard m_heard;
    bool m_measures = false;
    QHash<const QObject *, int> m_paints; // of each widget so far
};

Finder *&finder()
{
    static Finder *instance = nullptr;
    return instance;
}

} // namespace

bool obs_module_load(void)
{
    finder() = new Finder;
    return true;
}

void obs_module_unload(void)
{
    delete finder();
}

#include "finder.moc"
