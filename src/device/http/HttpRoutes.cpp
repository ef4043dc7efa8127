// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/http/HttpRoutes.h"

#include <algorithm>
#include <array>

namespace tallyforge {

namespace {

struct Row
{
    QLatin1String method;
    const char *verb;
    QLatin1String path;
    bool form = false;
};

constexpr std::array kRoutes{
    Row{QLatin1String("login"), "POST", QLatin1String("/login")},
    Row{QLatin1String("getStatus"), "GET", QLatin1String("/api/status")},
    Row{QLatin1String("networkTest"), "GET", QLatin1String("/api/network-test")},
    Row{QLatin1String("changePassword"), "POST", QLatin1String("/api/auth/change-password")},
    Row{QLatin1String("ensureApiToken"), "POST", QLatin1String("/api/auth/api-token")},
    Row{QLatin1String("getSettings"), "GET", QLatin1String("/api/settings")},
    Row{QLatin1String("setSettings"), "POST", QLatin1String("/api/settings")},
    Row{QLatin1String("getControllerList"), "GET", QLatin1String("/api/controller/list")},
    Row{QLatin1String("getControllerConfig"), "GET", QLatin1String("/api/controller/config")},
    Row{QLatin1String("setControllerConfig"), "POST", QLatin1String("/api/controller/config")},
    Row{QLatin1String("scanWifi"), "GET", QLatin1String("/scan")},
    Row{QLatin1String("configureWifi"), "POST", QLatin1String("/configure"), true},
    Row{QLatin1String("getState"), "GET", QLatin1String("/state")},
    Row{QLatin1String("reboot"), "POST", QLatin1String("/api/system/reboot")},
    Row{QLatin1String("otaCheck"), "GET", QLatin1String("/ota/check")},
    Row{QLatin1String("otaApply"), "POST", QLatin1String("/ota/apply")},
    Row{QLatin1String("otaProgress"), "GET", QLatin1String("/ota/progress")},
    Row{QLatin1String("c6OtaStatus"), "GET", QLatin1String("/api/system/c6-ota")},
    Row{QLatin1String("c6OtaApply"), "POST", QLatin1String("/api/system/c6-ota")},
    Row{QLatin1String("getMqttConfig"), "GET", QLatin1String("/api/mqtt/broker")},
    Row{QLatin1String("setMqttConfig"), "POST", QLatin1String("/api/mqtt/broker")},
    Row{QLatin1String("getDeviceId"), "GET", QLatin1String("/api/device-id")},
    Row{QLatin1String("setDeviceId"), "POST", QLatin1String("/api/device-id")},
    Row{QLatin1String("provision"), "POST", QLatin1String("/api/provision")},
    Row{QLatin1String("blePasskey"), "GET", QLatin1String("/api/auth/ble-passkey")},
};

} // namespace

HttpRoute httpRouteFor(const QString &method)
{
    const auto *const row = std::find_if(
        kRoutes.begin(), kRoutes.end(), [&method](const Row &row) { return row.method == method; });
    if (row == kRoutes.end()) {
        return {};
    }
    return {true, row->verb, row->path, row->form};
}

} // namespace tallyforge
