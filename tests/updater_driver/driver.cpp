// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Works the plug-in's updater from outside, by hotkeys that obs-websocket can trigger: "updates.due"
// lets the first check's time come, "updates.check" is a user's check, "updates.install" installs.
// Each state of the updater is appended as a line of JSON to the file that UPDATER_DRIVER_RECORD
// names. Nothing in the plug-in knows of this: it is found as what it is, an object of Qt's.

#include "updater/PluginUpdater.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaEnum>
#include <QPointer>
#include <QTimer>

#include <obs-module.h>

#include <array>
#include <chrono>

OBS_DECLARE_MODULE()

using namespace Qt::StringLiterals;
using tallyforge::PluginUpdater;

namespace {

constexpr std::chrono::seconds firstCheck{20};

class Driver final : public QObject
{
    Q_OBJECT

public:
    void letFirstCheckBeDue()
    {
        const auto timers = m_app ? m_app->findChildren<QTimer *>() : QList<QTimer *>();
        for (QTimer *timer : timers) {
            if (timer->isSingleShot() && timer->isActive() && timer->intervalAsDuration() == firstCheck) {
                timer->start(0);
            }
        }
    }
    void check() { QMetaObject::invokeMethod(m_updater, "check", Q_ARG(bool, true)); }
    void install() { QMetaObject::invokeMethod(m_updater, "install"); }

protected:
    // The application hears of every event in OBS's main thread, the plug-in's own among them.
    bool eventFilter(QObject *watched, QEvent *) override
    {
        if (!m_app && qstrcmp(watched->metaObject()->className(), "tallyforge::App") == 0) {
            m_app = watched;
            QCoreApplication::instance()->removeEventFilter(this);
            QMetaObject::invokeMethod(this, &Driver::findUpdater, Qt::QueuedConnection);
        }
        return false;
    }

private:
    Q_INVOKABLE void record()
    {
        QFile file(qEnvironmentVariable("UPDATER_DRIVER_RECORD"));
        if (!m_updater || !file.open(QIODevice::Append)) {
            return;
        }
        // Its inline accessors alone: the driver has no other code of it.
        const auto *updater = static_cast<const PluginUpdater *>(m_updater.data());
        const QMetaObject *kind = m_updater->metaObject();
        const QMetaEnum states = kind->enumerator(kind->indexOfEnumerator("State"));
        const QJsonObject line{
            {u"state"_s, QLatin1StringView(states.valueToKey(quint64(updater->state())))},
            {u"message"_s, updater->message()},
            {u"version"_s, updater->info().version},
            {u"notes"_s, updater->info().notes},
            {u"progress"_s, updater->progress()},
        };
        file.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    }

    void findUpdater()
    {
        const QObjectList children = m_app ? m_app->children() : QObjectList();
        for (QObject *child : children) {
            const QMetaObject *kind = child->metaObject();
            if (qstrcmp(kind->className(), "tallyforge::PluginUpdater") == 0) {
                m_updater = child;
                connect(child, kind->method(kind->indexOfSignal("stateChanged()")), this,
                        metaObject()->method(metaObject()->indexOfMethod("record()")));
            }
        }
    }

    QPointer<QObject> m_app;
    QPointer<QObject> m_updater;
};

struct Hotkey
{
    const char *name;
    void (Driver::*action)();
    obs_hotkey_id id;
};

struct Loaded
{
    Driver *driver = nullptr;
    std::array<Hotkey, 3> hotkeys{{{"updates.due", &Driver::letFirstCheckBeDue, 0},
                                   {"updates.check", &Driver::check, 0},
                                   {"updates.install", &Driver::install, 0}}};
};

Loaded &loaded()
{
    static Loaded instance;
    return instance;
}

void press(void *data, obs_hotkey_id, obs_hotkey_t *, bool pressed)
{
    if (pressed) {
        const auto *hotkey = static_cast<const Hotkey *>(data);
        QMetaObject::invokeMethod(loaded().driver, hotkey->action, Qt::QueuedConnection);
    }
}

} // namespace

bool obs_module_load(void)
{
    loaded().driver = new Driver;
    QCoreApplication::instance()->installEventFilter(loaded().driver);
    for (Hotkey &hotkey : loaded().hotkeys) {
        hotkey.id = obs_hotkey_register_frontend(hotkey.name, hotkey.name, press, &hotkey);
    }
    return true;
}

void obs_module_unload(void)
{
    for (const Hotkey &hotkey : loaded().hotkeys) {
        obs_hotkey_unregister(hotkey.id);
    }
    delete loaded().driver;
}

#include "driver.moc"
