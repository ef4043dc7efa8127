// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/WebSocketVendor.h"

#include "core/HostedServer.h"
#include "plugin/App.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QThread>

#include <obs.hpp>

#include <obs-websocket-api.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

// A client's thread waits for the main thread no longer, because the main thread waits for the
// client's when the user switches obs-websocket off.
constexpr std::chrono::milliseconds patience{1000};

// Where the threads of the clients meet the main thread.
struct Desk
{
    std::mutex mutex;
    std::condition_variable changed;
    bool isOpen = false;
    int waiting = 0; // threads
};

Desk &desk()
{
    static Desk desk;
    return desk;
}

QByteArray compact(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

WebSocketVendor::WebSocketVendor(App &app)
    : m_app(app)
    , m_vendor(obs_websocket_register_vendor("tallyforge"))
{
    if (m_vendor == nullptr) {
        return;
    }
    for (Request &request : m_requests) {
        obs_websocket_vendor_register_request(m_vendor, request.op, onRequest, &request);
    }
    connect(&app.live(), &LiveData::changed, this, &WebSocketVendor::tellData);
    connect(&app.live(), &LiveData::changed, this, &WebSocketVendor::tellStatus); // the sport
    connect(app.sources(), &SourceManager::statusChanged, this, &WebSocketVendor::tellStatus);
    connect(&app.portal(), &PortalClient::signedInChanged, this, &WebSocketVendor::tellStatus);
    // obs-websocket may be unloaded first.
    connect(qApp, &QCoreApplication::aboutToQuit, this, &WebSocketVendor::end);
    const std::scoped_lock lock(desk().mutex);
    desk().isOpen = true;
}

WebSocketVendor::~WebSocketVendor()
{
    end();
    std::unique_lock lock(desk().mutex);
    desk().changed.wait(lock, [] { return desk().waiting == 0; });
}

void WebSocketVendor::end()
{
    m_vendor = nullptr;
    const std::scoped_lock lock(desk().mutex);
    desk().isOpen = false;
    desk().changed.notify_all();
}

void WebSocketVendor::onRequest(obs_data *request, obs_data *response, void *registered)
{
    const QJsonObject body = QJsonDocument::fromJson(obs_data_get_json(request)).object();
    const QByteArray reply = ask(*static_cast<const Request *>(registered), body);
    const OBSDataAutoRelease data = obs_data_create_from_json(reply.constData());
    obs_data_apply(response, data);
}

QByteArray WebSocketVendor::ask(const Request &request, const QJsonObject &body)
{
    const QString op = QString::fromLatin1(request.op);
    std::unique_lock lock(desk().mutex);
    if (!desk().isOpen) {
        return compact(HostedServer::failure(u"unavailable"_s));
    }
    if (QThread::isMainThread()) { // another plug-in's request
        lock.unlock();
        return request.vendor->answer(op, body);
    }
    const auto reply = std::make_shared<std::optional<QByteArray>>();
    const auto work = [vendor = request.vendor, op, body, reply] {
        QByteArray answer = vendor->answer(op, body);
        const std::scoped_lock answering(desk().mutex);
        *reply = std::move(answer);
        desk().changed.notify_all();
    };
    QMetaObject::invokeMethod(request.vendor, work, Qt::QueuedConnection);
    ++desk().waiting;
    desk().changed.wait_for(lock, patience,
                            [reply] { return reply->has_value() || !desk().isOpen; });
    --desk().waiting;
    desk().changed.notify_all();
    return reply->value_or(compact(HostedServer::failure(u"unavailable"_s)));
}

QByteArray WebSocketVendor::answer(const QString &op, const QJsonObject &body) const
{
    return op == "get"_L1 ? m_app.live().toCompactJson()
                          : compact(m_app.server()->reply({op, body}));
}

void WebSocketVendor::tellData()
{
    tell("data", m_app.live().toCompactJson());
}

void WebSocketVendor::tellStatus()
{
    const QByteArray status = compact(m_app.statusForPrograms());
    if (status != m_status) {
        m_status = status;
        tell("status", status);
    }
}

void WebSocketVendor::tell(const char *event, const QByteArray &json) const
{
    if (m_vendor != nullptr) {
        const OBSDataAutoRelease data = obs_data_create_from_json(json.constData());
        obs_websocket_vendor_emit_event(m_vendor, event, data);
    }
}

} // namespace tallyforge
