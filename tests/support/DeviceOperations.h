// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceSession.h"

#include <QJsonDocument>
#include <QStringList>

#include <functional>

namespace tallyforge::test {

using namespace Qt::StringLiterals;

/// Any operation's callback: it hands its arguments on as one text. Empty without a listener.
struct Callback
{
    std::function<void(const QString &)> listener;

    template <typename... Values> operator std::function<void(Values...)>() const // NOLINT: meant to be implicit
    {
        if (!listener) {
            return {};
        }
        return [listener = listener](Values... values) {
            listener((QStringList() << ... << text(values)).join(u' ').trimmed());
        };
    }

    static QString text(bool ok) { return ok ? u"ok"_s : u"failed"_s; }
    static QString text(const QString &value) { return value; }
    static QString text(const QJsonObject &object)
    {
        return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    }
    static QString text(const ControllerChoice &choice)
    {
        return choice.manufacturer + choice.model + choice.inputType;
    }
    static QString text(const WifiNetwork &n) { return n.ssid + u':' + QString::number(n.rssi) + u':' + n.auth; }
    static QString text(const WirelessLink &link)
    {
        return QString::number(link.available) + QString::number(link.paired) + link.peerMac + link.startError;
    }
    template <typename Value> static QString text(const QList<Value> &values)
    {
        QStringList texts;
        for (const Value &value : values) {
            texts.append(text(value));
        }
        return texts.join(u',');
    }
};

/// One of a session's operations: its requests to a device with this script, and its callback's arguments, with
/// "[transmits]" if the session then believes that the device transmits.
struct Operation
{
    using Run = std::function<void(DeviceSession &, const Callback &)>;

    const char *name; ///< a colon stands before the special case
    QByteArrayList script;
    QStringList requests;
    QStringList outcomes;
    Run run;
    bool waits = false; ///< between its calls
};

inline QList<Operation> allOperations()
{
    QList<Operation> all;
    const auto row = [&all](const char *name, const QByteArrayList &script, const QStringList &requests,
                            const QStringList &outcomes, const Operation::Run &run,
                            bool waits = false) { all.append({name, script, requests, outcomes, run, waits}); };
    const Operation::Run scan = [](auto &s, auto &cb) { s.scanWifi(cb); };
    const Operation::Run look = [](auto &s, auto &cb) { s.wirelessLink(cb); };
    row("refreshStatus", {"getStatus broken: No."}, {u"getStatus{}"_s}, {u"failed No."_s},
        [](auto &s, auto &cb) { s.refreshStatus(cb); });
    row("changePassword", {},
        {uR"(changePassword{"confirm_password":"n","current_password":"o","new_password":"n"})"_s}, {u"ok"_s},
        [](auto &s, auto &cb) { s.changePassword(u"o"_s, u"n"_s, cb); });
    row("scanWifi", {}, {u"scanWifi{}"_s, u"getEspNow{}"_s}, {u"ok"_s}, scan);
    row("scanWifi: by strength, each name once",
        {R"(scanWifi {"networks":[{"ssid":"weak","rssi":-80,"auth":3},{"ssid":""},)"
         R"({"ssid":"near","rssi":-40,"auth":"wpa2"},{"ssid":"weak","rssi":-10}]})"},
        {u"scanWifi{}"_s}, {u"ok near:-40:wpa2,weak:-80:3"_s}, scan);
    row("scanWifi: with the Wi-Fi off", {R"(getEspNow {"espnow":{"role":"off","configured_role":"tx"}})"},
        {u"scanWifi{}"_s, u"getEspNow{}"_s},
        {u"ok  This device is set to send its scores to a wireless receiver, so its Wi-Fi is switched off and it "
         "cannot see networks. Turn the wireless link off to use Wi-Fi. [transmits]"_s},
        scan);
    row("wirelessLink", {R"(getEspNow {"espnow":{"role":"tx","peer_mac":"aa","key_set":true,"start_error":"e"}})"},
        {u"getEspNow{}"_s}, {u"11aae [transmits]"_s}, look);
    row("wirelessLink: only a key", {R"(getEspNow {"espnow":{"key_set":true}})"}, {u"getEspNow{}"_s}, {u"10"_s}, look);
    row("wirelessLink: no radio", {}, {u"getEspNow{}"_s}, {u"00"_s}, look);
    row("enableWirelessTransmitter", {R"(setEspNow {"key":"K"})"},
        {uR"(setEspNow{"generate_key":true,"peer_mac":"aa","role":"tx"})"_s, u"reboot{}"_s}, {u"ok  K [transmits]"_s},
        [](auto &s, auto &cb) { s.enableWirelessTransmitter(u" aa "_s, u"k"_s, true, cb); });
    row("enableWirelessTransmitter: a given key", {"reboot denied: No."},
        {uR"(setEspNow{"key":"k","role":"tx"})"_s, u"reboot{}"_s}, {u"failed No. [transmits]"_s},
        [](auto &s, auto &cb) { s.enableWirelessTransmitter(u" "_s, u" k "_s, false, cb); });
    row("disableEspNowSender", {}, {uR"(setEspNow{"role":"off"})"_s, u"reboot{}"_s}, {u"ok"_s},
        [](auto &s, auto &cb) { s.disableEspNowSender(cb); });
    row("disableEspNowSender: after transmitting", {R"(getEspNow {"espnow":{"role":"tx"}})"},
        {u"getEspNow{}"_s, uR"(setEspNow{"role":"off"})"_s, u"reboot{}"_s}, {u"ok"_s},
        [](auto &s, auto &cb) { s.wirelessLink([&s, cb](const WirelessLink &) { s.disableEspNowSender(cb); }); });
    row("listControllers",
        {R"(getControllerList {"controllers":[{"model":"m"},{"input_type":"l"},{"sport":"","model":"m"}]})"},
        {u"getControllerList{}"_s}, {u"ok m,l"_s}, [](auto &s, auto &cb) { s.listControllers(cb); });
    const QString large(5000, u'x'); // which goes in pieces where a carrier has a limit
    row("getControllerConfig", {R"(getControllerConfig {"a":")" + large.toUtf8() + "\"}"}, {u"getControllerConfig{}"_s},
        {uR"(ok {"a":")"_s + large + u"\"}"_s}, [](auto &s, auto &cb) { s.getControllerConfig(cb); });
    row("setController", {},
        {uR"(setControllerConfig{"input_type":"d","manufacturer":"a","model":")"_s + large + u"\",\"sport\":\"c\"}"_s},
        {u"ok"_s}, [large](auto &s, auto &cb) { s.setController({u"a"_s, large, u"c"_s, u"d"_s}, cb); });
    row("ensureApiToken", {R"(ensureApiToken {"token":"T"})"}, {u"ensureApiToken{}"_s}, {u"ok T"_s},
        [](auto &s, auto &cb) { s.ensureApiToken(cb); });
    row("reboot", {}, {u"reboot{}"_s}, {u"ok"_s}, [](auto &s, auto &cb) { s.reboot(cb); });

    const QStringList join{uR"(configureWifi{"pass":"","ssid":"Gym"})"_s, u"getStatus{}"_s};
    row(
        "verifyWifi", {R"(getStatus {"wifi_provision":{"state":"ok"},"wifi_sta_ip":"10.0.0.9"})"}, join.mid(1),
        {u"ok Joined Gym (10.0.0.9)."_s}, [](auto &s, auto &cb) { s.verifyWifi(u"Gym"_s, 0, {}, cb); }, true);
    row(
        "configureWifi", {R"(getStatus {"wifi_provision":{"state":"ok"}})"}, join, {u"ok Joined Gym."_s},
        [](auto &s, auto &cb) { s.configureWifi(u"Gym"_s, {}, {}, cb); }, true);
    const auto joinRow = [&](const char *name, const QByteArray &status, const QString &outcome, int more = 0) {
        row(name, QByteArrayList(more + 1, "getStatus " + status), join + QStringList(more, u"getStatus{}"_s),
            QStringList{u"Checking that the device can join Gym…"_s} +
                QStringList(more, u"Checking that the device can join Gym… (4 s)"_s) + QStringList{outcome},
            [](auto &s, auto &cb) { s.configureWifi(u"Gym"_s, {}, cb.listener, cb); });
    };
    joinRow("configureWifi: refused", R"({"wifi_provision":{"state":"reverted","detail":"bad key"}})",
            u"failed The device could not join Gym: bad key. Check the password and try again."_s);
    joinRow("configureWifi: refused without a reason", R"({"wifi_provision":{"state":"reverted"}})",
            u"failed The device could not join Gym. Check the password and try again."_s);
    joinRow("configureWifi: no status", "broken: No.", u"failed No."_s);
    joinRow("configureWifi: without an end", R"({"wifi_provision":{"state":"x","elapsed_ms":4999}})",
            u"failed The device is still working on joining Gym. Check back in a minute."_s, 12);
    return all;
}

} // namespace tallyforge::test
