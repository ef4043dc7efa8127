// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Tells a program that uses the mouse and the keyboard what OBS's windows show, where, and which of
// its clicks and keys have arrived. It only looks. Each connection to the socket that
// DOCK_FINDER_SOCKET names sends one line, a JSON object: "root" is the object name of a widget, or
// "*" for all windows; with "measure" each widget also tells the least size that it needs, for which
// Qt may redraw it. The answer holds "widgets", the visible ones from the root on down, and "heard".
// "watch": true begins to note how long the main thread is held, without these answers; with
// "watch": false the answer holds the milliseconds: "waited" and "used", see LoopWatch, and "shown",
// see ShownAges.

#include "bench/LoopWatch.h"
#include "bench/ShownAges.h"
#include "tests/dock_finder/Heard.h"
#include "tests/dock_finder/Items.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QWidget>

#include <optional>

#include <obs-module.h>

OBS_DECLARE_MODULE()

using namespace Qt::StringLiterals;
using namespace tallyforge::test;

namespace {

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

class Finder final : public QObject
{
    Q_OBJECT

public:
    Finder()
    {
        qApp->installEventFilter(this);
        const QString path = qEnvironmentVariable("DOCK_FINDER_SOCKET");
        QLocalServer::removeServer(path); // of an OBS that was killed
        m_server.listen(path);
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
                if (m_watch) {
                    m_watch->beginOwnWork();
                }
                const QJsonObject wish = QJsonDocument::fromJson(client->readLine()).object();
                client->write(QJsonDocument(answer(wish)).toJson(QJsonDocument::Compact));
                client->disconnectFromServer();
                if (m_watch) {
                    m_watch->endOwnWork();
                }
            }
        });
    }

    QJsonObject answer(const QJsonObject &wish)
    {
        QJsonObject answer{{u"heard"_s, m_heard.told()}};
        m_measures = wish[u"measure"_s].toBool();
        if (const QString root = wish[u"root"_s].toString(); !root.isEmpty()) {
            answer.insert(u"widgets"_s, look(root));
        }
        if (wish[u"watch"_s].toBool()) {
            m_shown.emplace();
            m_watch.emplace().beginOwnWork();
        } else if (m_watch && wish.contains(u"watch"_s)) {
            answer.insert(u"waited"_s, m_watch->waited());
            answer.insert(u"used"_s, m_watch->used());
            answer.insert(u"shown"_s, m_shown->found());
            m_watch.reset();
            m_shown.reset();
        }
        return answer;
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
    std::optional<tallyforge::bench::LoopWatch> m_watch;
    std::optional<tallyforge::bench::ShownAges> m_shown;
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
