// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The operations of a DeviceSession on a device after the sign-in: each is one or a few calls.

#include "device/DeviceSession.h"

#include <QPointer>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds wifiVerify{3000}; // before each look whether Wi-Fi was joined
constexpr int rebootAnswerMs = 8000;                  // for a device to say that it restarts

constexpr int scanTimeoutMs = 40000;
constexpr int lastWifiAttempt = 12;

template <typename Callback, typename... Values>
void finish(const Callback &callback, const Values &...values)
{
    if (callback) {
        callback(values...);
    }
}

// The callback of a call whose outcome alone matters.
RpcClient::Callback outcomeTo(const DeviceSession::Done &callback)
{
    return
        [callback](const RpcResult &result) { finish(callback, result.ok, result.errorMessage); };
}

} // namespace

void DeviceSession::changePassword(const QString &current, const QString &next,
                                   const Done &callback)
{
    const QJsonObject params{
        {u"current_password"_s, current}, {u"new_password"_s, next}, {u"confirm_password"_s, next}};
    m_rpc.call(u"changePassword"_s, params, [this, next, callback](const RpcResult &result) {
        const QPointer<DeviceSession> self = this;
        if (result.ok) {
            m_password = next;
            m_mustChangePassword = false;
            becomeReady();
        }
        if (self) {
            finish(callback, result.ok, result.errorMessage);
        }
    });
}

void DeviceSession::scanWifi(const std::function<void(bool ok, const QList<WifiNetwork> &networks,
                                                      const QString &note)> &callback)
{
    const auto onReply = [this, callback](const RpcResult &result) {
        const QList<WifiNetwork> networks = WifiNetwork::listFrom(result.result);
        if (!result.ok || !networks.isEmpty()) {
            finish(callback, result.ok, networks, result.errorMessage);
            return;
        }
        // Perhaps there is no network, perhaps the Wi-Fi is off.
        wirelessLink([callback](const WirelessLink &link) {
            finish(callback, true, QList<WifiNetwork>(),
                   link.transmitting
                       ? tr("This device is set to send its scores to a wireless receiver, so its "
                            "Wi-Fi is switched off and it cannot see networks. Turn the wireless "
                            "link off to use Wi-Fi.")
                       : QString());
        });
    };
    m_rpc.call(u"scanWifi"_s, {}, onReply, scanTimeoutMs);
}

void DeviceSession::wirelessLink(const std::function<void(const WirelessLink &link)> &callback)
{
    m_rpc.call(u"getEspNow"_s, {}, [this, callback](const RpcResult &result) {
        const WirelessLink link =
            WirelessLink::fromJson(result.result.value("espnow"_L1).toObject());
        m_wirelessActive = link.transmitting;
        finish(callback, link);
    });
}

void DeviceSession::enableWirelessTransmitter(
    const QString &peerMac, const QString &key, bool generateKey,
    const std::function<void(bool ok, const QString &error, const QString &key)> &callback)
{
    QJsonObject params{{u"role"_s, u"tx"_s}};
    if (const QString address = peerMac.trimmed(); !address.isEmpty()) {
        params.insert(u"peer_mac"_s, address);
    }
    if (generateKey) {
        params.insert(u"generate_key"_s, true);
    } else if (const QString given = key.trimmed(); !given.isEmpty()) {
        params.insert(u"key"_s, given);
    }
    m_rpc.call(u"setEspNow"_s, params, [this, callback](const RpcResult &result) {
        if (!result.ok) {
            finish(callback, false, result.errorMessage, QString());
            return;
        }
        m_wirelessActive = true;
        const QString inUse = result.result.value("key"_L1).toString();
        reboot([callback, inUse](bool ok, const QString &error) {
            finish(callback, ok, error, inUse);
        });
    });
}

void DeviceSession::disableEspNowSender(const Done &callback)
{
    m_rpc.call(u"setEspNow"_s, {{u"role"_s, u"off"_s}}, [this, callback](const RpcResult &result) {
        if (!result.ok) {
            finish(callback, false, result.errorMessage);
            return;
        }
        m_wirelessActive = false;
        reboot(callback);
    });
}

void DeviceSession::configureWifi(const QString &ssid, const QString &pass,
                                  const Progress &progress, const Done &done)
{
    const QJsonObject params{{u"ssid"_s, ssid}, {u"pass"_s, pass}};
    m_rpc.call(u"configureWifi"_s, params, [this, ssid, progress, done](const RpcResult &result) {
        if (!result.ok) {
            finish(done, false, result.errorMessage);
            return;
        }
        const QPointer<DeviceSession> self = this;
        if (progress) {
            progress(tr("Checking that the device can join %1…").arg(ssid));
        }
        if (self) {
            verifyWifi(ssid, 0, progress, done);
        }
    });
}

void DeviceSession::verifyWifi(const QString &ssid, int attempt, const Progress &progress,
                               const Done &done)
{
    QTimer::singleShot(wifiVerify, this, [this, ssid, attempt, progress, done] {
        refreshStatus([this, ssid, attempt, progress, done](bool ok, const QString &error) {
            if (ok) {
                judgeWifi(ssid, attempt, progress, done);
            } else {
                finish(done, false, error);
            }
        });
    });
}

void DeviceSession::judgeWifi(const QString &ssid, int attempt, const Progress &progress,
                              const Done &done)
{
    const QJsonObject provision = m_status.value("wifi_provision"_L1).toObject();
    const QString state = provision.value("state"_L1).toString();
    if (state == "ok"_L1) {
        const QString address = wifiIp();
        finish(done, true,
               tr("Joined %1%2.").arg(ssid, address.isEmpty() ? address : u" (" + address + u')'));
        return;
    }
    if (state == "reverted"_L1) {
        const QString reason = provision.value("detail"_L1).toString();
        finish(done, false,
               tr("The device could not join %1%2. Check the password and try again.")
                   .arg(ssid, reason.isEmpty() ? reason : u": " + reason));
        return;
    }
    if (attempt >= lastWifiAttempt) {
        finish(done, false,
               tr("The device is still working on joining %1. Check back in a minute.").arg(ssid));
        return;
    }
    const QPointer<DeviceSession> self = this;
    if (progress) {
        const qint64 seconds = provision.value("elapsed_ms"_L1).toInteger() / 1000;
        progress(
            tr("Checking that the device can join %1… (%2 s)").arg(ssid, QString::number(seconds)));
    }
    if (self) {
        verifyWifi(ssid, attempt + 1, progress, done);
    }
}

void DeviceSession::listControllers(
    const std::function<void(bool ok, const QList<ControllerChoice> &choices, const QString &error)>
        &callback)
{
    m_rpc.call(u"getControllerList"_s, {}, [callback](const RpcResult &result) {
        finish(callback, result.ok, ControllerChoice::listFrom(result.result), result.errorMessage);
    });
}

void DeviceSession::getControllerConfig(
    const std::function<void(bool ok, const QJsonObject &config, const QString &error)> &callback)
{
    m_rpc.call(u"getControllerConfig"_s, {}, [callback](const RpcResult &result) {
        finish(callback, result.ok, result.result, result.errorMessage);
    });
}

void DeviceSession::setController(const ControllerChoice &choice, const Done &callback)
{
    m_rpc.call(u"setControllerConfig"_s, choice.toJson(), outcomeTo(callback));
}

void DeviceSession::ensureApiToken(
    const std::function<void(bool ok, const QString &token, const QString &error)> &callback)
{
    m_rpc.call(u"ensureApiToken"_s, {}, [callback](const RpcResult &result) {
        finish(callback, result.ok, result.result.value("token"_L1).toString(),
               result.errorMessage);
    });
}

void DeviceSession::reboot(const Done &callback)
{
    m_restarting = true; // so that the link's end counts as the restart
    const auto onReply = [this, callback](const RpcResult &result) {
        const bool went =
            result.ok || result.errorCode == "timeout"_L1 || result.errorCode == "disconnected"_L1;
        if (!went) {
            m_restarting = false;
        }
        finish(callback, went, went ? QString() : result.errorMessage);
    };
    m_rpc.call(u"reboot"_s, {}, onReply, rebootAnswerMs);
}

} // namespace tallyforge
