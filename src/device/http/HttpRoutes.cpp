// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/http/HttpRoutes.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

struct Row
{
    QLatin1StringView method;
    const char *verb;
    QLatin1StringView path;
    bool form = false;
};

constexpr std::array kRoutes{
    Row{"login"_L1, "POST", "/login"_L1},
    Row{"getStatus"_L1, "GET", "/api/status"_L1},
    Row{"networkTest"_L1, "GET", "/api/network-test"_L1},
    Row{"changePassword"_L1, "POST", "/api/auth/change-password"_L1},
    Row{"ensureApiToken"_L1, "POST", "/api/auth/api-token"_L1},
    Row{"getSettings"_L1, "GET", "/api/settings"_L1},
    Row{"setSettings"_L1, "POST", "/api/settings"_L1},
    Row{"getControllerList"_L1, "GET", "/api/controller/list"_L1},
    Row{"getControllerConfig"_L1, "GET", "/api/controller/config"_L1},
    Row{"setControllerConfig"_L1, "POST", "/api/controller/config"_L1},
    Row{"scanWifi"_L1, "GET", "/scan"_L1},
    Row{"configureWifi"_L1, "POST", "/configure"_L1, true},
    Row{"getState"_L1, "GET", "/state"_L1},
    Row{"reboot"_L1, "POST", "/api/system/reboot"_L1},
    Row{"otaCheck"_L1, "GET", "/ota/check"_L1},
    Row{"otaApply"_L1, "POST", "/ota/apply"_L1},
    Row{"otaProgress"_L1, "GET", "/ota/progress"_L1},
    Row{"c6OtaStatus"_L1, "GET", "/api/system/c6-ota"_L1},
    Row{"c6OtaApply"_L1, "POST", "/api/system/c6-ota"_L1},
    Row{"getMqttConfig"_L1, "GET", "/api/mqtt/broker"_L1},
    Row{"setMqttConfig"_L1, "POST", "/api/mqtt/broker"_L1},
    Row{"getDeviceId"_L1, "GET", "/api/device-id"_L1},
    Row{"setDeviceId"_L1, "POST", "/api/device-id"_L1},
    Row{"provision"_L1, "POST", "/api/provision"_L1},
    Row{"blePasskey"_L1, "GET", "/api/auth/ble-passkey"_L1},
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
