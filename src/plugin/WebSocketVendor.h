// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QString>

#include <array>

struct obs_data;

namespace tallyforge {

class App;

/// Offers to the clients of obs-websocket what the hosted server offers to programs, as the vendor
/// "tallyforge" (docs/obs-websocket.md): each of the server's requests, and the events "data" and
/// "status" when these change. Does nothing where OBS has no obs-websocket. Main thread.
class WebSocketVendor final : public QObject
{
    Q_OBJECT

public:
    /// To be made once OBS has loaded all modules. app outlives it.
    explicit WebSocketVendor(App &app);
    /// Returns when no request is under way any more; those that wait are told "unavailable".
    ~WebSocketVendor() override;

private:
    struct Request
    {
        WebSocketVendor *vendor;
        const char *op;
    };

    // Called by obs-websocket from threads of its own.
    static void onRequest(obs_data *request, obs_data *response, void *registered);
    static QByteArray ask(const Request &request, const QJsonObject &body);

    [[nodiscard]] QByteArray answer(const QString &op, const QJsonObject &body) const;
    void end();
    void tellData();
    void tellStatus();
    void tell(const char *event, const QByteArray &json) const;

    App &m_app;
    void *m_vendor = nullptr; // obs-websocket's, null once OBS ends
    std::array<Request, 4> m_requests{
        {{this, "get"}, {this, "status"}, {this, "devices"}, {this, "use"}}};
    QByteArray m_status; // as the last event told it
};

} // namespace tallyforge
