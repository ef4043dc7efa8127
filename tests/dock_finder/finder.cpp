// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Tells whoever uses the mouse and the keyboard what is to be seen in OBS and where. It only looks.
// Each connection to the socket that DOCK_FINDER_SOCKET names sends one line, the object name of a
// widget or "*" for all windows, and gets a JSON array of the visible widgets from there on down.
// With "measure " in front each also tells the least size that it needs, for which Qt may redraw it.

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QMenu>
#include <QMenuBar>
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

QJsonArray itemsOf(QWidget *widget)
{
    QJsonArray items;
    const auto add = [&](const QString &text, const QRect &area) {
        items.append(QJsonObject{{u"text"_s, text}, {u"rect"_s, onScreen(widget, area)}});
    };
    const auto addActions = [&](const auto *menu) {
        for (const QAction *action : menu->actions()) {
            add(action->text().remove(u'&'), menu->actionGeometry(const_cast<QAction *>(action)));
        }
    };
    if (const auto *view = qobject_cast<QAbstractItemView *>(widget)) {
        for (int row = 0; view->model() && row < view->model()->rowCount(); ++row) {
            const QModelIndex index = view->model()->index(row, 0);
            const QRect area = view->visualRect(index);
            add(index.data().toString(), {view->viewport()->mapTo(widget, area.topLeft()), area.size()});
        }
    } else if (const auto *box = qobject_cast<QComboBox *>(widget)) {
        for (int index = 0; index < box->count(); ++index) {
            add(box->itemText(index), {});
        }
    } else if (const auto *menu = qobject_cast<QMenu *>(widget)) {
        addActions(menu);
    } else if (const auto *bar = qobject_cast<QMenuBar *>(widget)) {
        addActions(bar);
    }
    return items;
}

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
                const QStringList words = QString::fromUtf8(client->readLine()).trimmed().split(u' ');
                m_measures = words.size() > 1 && words.constFirst() == u"measure"_s;
                client->write(QJsonDocument(look(words.constLast())).toJson(QJsonDocument::Compact));
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
        if (const QJsonArray items = itemsOf(widget); !items.isEmpty()) {
            line.insert(u"items"_s, items);
        }
        for (const char *name : {"text", "title", "currentText", "placeholderText", "accessibleName", "toolTip",
                                 "checked", "value", "focusPolicy", "layoutDirection"}) {
            if (const QVariant value = widget->property(name); value.isValid()) {
                line.insert(QLatin1StringView(name), QJsonValue::fromVariant(value));
            }
        }
        return line;
    }

    QLocalServer m_server;
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
