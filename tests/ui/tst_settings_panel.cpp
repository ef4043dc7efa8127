// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A device's settings, over a scripted one.

#include "tests/ui/PanelFixture.h"
#include "ui/manager/SettingsPanel.h"

#include <QGroupBox>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto list = R"(getControllerList {"controllers":[
    {"manufacturer":"acme","model":"Z","sport":"polo","input_type":"rs232"}, 7, {"manufacturer":"Acme","sport":[]},
    {"manufacturer":"Acme","model":"b","sport":"hockey","input_type":"wireless"},
    {"manufacturer":"Acme","model":"B","sport":"hockey","input_type":"rs232"},
    {"manufacturer":"Acme","model":"B","sport":"hockey","input_type":"wireless"},
    {"manufacturer":"Acme","model":"B","sport":"judo","input_type":"&cable <b>"},
    {"manufacturer":"vArSity","model":"V","sport":"polo","input_type":"wireless"},
    {"manufacturer":"OES","model":"V","sport":"polo","input_type":"wireless"}]})";
constexpr auto cable = R"({"manufacturer":"Acme","model":"B","sport":"hockey","input_type":"rs232"})";
constexpr auto rm024 = R"({"manufacturer":"Acme","model":"B","sport":"hockey","input_type":"wireless"})";
constexpr auto xbee = R"({"manufacturer":"vArSity","model":"V","sport":"polo","input_type":"wireless"})";
constexpr auto defaults = R"({"http_endpoint_enabled":true,"mqtt_config_enabled":true,"tcp_feed_enabled":true,
    "test_cloud_data_enabled":false,"wireless_output_enabled":false,"wireless_output_network_id":1,
    "wireless_output_channel":1,"ethernet_bridge_output_enabled":false,"ethernet_bridge_peer_host":"",
    "ethernet_bridge_port":1011,"usb_tunnel_enabled":false,"usb_tunnel_port":18883})";

} // namespace

class TestSettingsPanel : public QObject, PanelFixture
{
    Q_OBJECT

    void load(const QByteArray &config, const QByteArray &settings)
    {
        m_device.tell({list, "getControllerConfig " + config, "getSettings " + settings});
        panel()->refresh();
    }
    SettingsPanel *panel() { return static_cast<SettingsPanel *>(m_panel.get()); }
    QWidget *input(const QString &key) { return find(u"Setting_"_s + key); }
    void set(const QString &key, const QVariant &value)
    {
        const bool isText = value.typeId() == QMetaType::QString;
        const char *number = value.typeId() == QMetaType::Bool ? "checked" : "value";
        input(key)->setProperty(input(key)->inherits("QComboBox") ? "currentText" : isText ? "text" : number, value);
        if (auto *box = qobject_cast<QComboBox *>(input(key))) {
            Q_EMIT box->activated(box->currentIndex());
        }
    }
    QVariantMap saved()
    {
        m_device.requests.clear();
        press(u"SaveSettings"_s);
        return json(m_device.requests.value(0).mid(11).toUtf8()).toVariantMap(); // after "setSettings"
    }
    // How many requests the device has got since it was told to save.
    qsizetype requestsAfter(std::chrono::milliseconds time)
    {
        skip(time);
        return m_device.requests.size() - 1;
    }

private Q_SLOTS:
    void init()
    {
        begin();
        show<SettingsPanel>();
    }

    void save_data()
    {
        QTest::addColumn<QByteArrayList>("row"); // config, settings, typed, and in what the defaults differ then
        const auto add = [](const char *name, const QByteArrayList &row) { QTest::newRow(name) << row; };
        const QByteArray other = R"({"http_endpoint_enabled":false,"tcp_feed_enabled":false,
            "test_cloud_data_enabled":true,"wireless_output_enabled":true,"wireless_output_network_id":20,
            "wireless_output_channel":10,"ethernet_bridge_output_enabled":true,"ethernet_bridge_peer_host":"a.local",
            "ethernet_bridge_port":65535,"usb_tunnel_enabled":true,"usb_tunnel_port":1})";
        const QByteArray odd = R"({"http_endpoint_enabled":0,"tcp_feed_enabled":"false","usb_tunnel_enabled":1,
            "wireless_output_network_id":"2","wireless_output_channel":1.5,"ethernet_bridge_peer_host":["a"],
            "ethernet_bridge_port":null,"usb_tunnel_port":0})";
        const QByteArray searching = R"({"wireless_auto_scan":true,"wireless_group":7,"wireless_channel":0})";
        const QByteArray found = R"({"wireless_auto_scan":false,"wireless_group":255,"wireless_channel":40})";
        const QByteArray told = R"({"xbee_channel":11,"xbee_pan_id":161})";
        const QByteArray blank = R"({"xbee_channel":255,"xbee_pan_id":65535})";
        add("all told", {cable, QByteArray(other).replace("{", "{\"mqtt_config_enabled\":false,"), "{}", other});
        add("all typed", {cable, "{}", QByteArray(other).replace("a.local", "  a.local\t"), other});
        add("odd", {cable, odd, "{}", R"({"usb_tunnel_port":1})"});
        add("nothing about the form", {cable, R"({"wireless_group":7,"xbee_channel":11})", "{}", "{}"});
        add("RM024", {rm024, "{}", "{}", QByteArray(searching).replace('7', '0')});
        add("RM024 searching", {rm024, R"({"wireless_group":7,"wireless_channel":40})", "{}", searching});
        add("RM024 typed", {rm024, R"({"wireless_channel":40})", found, found});
        add("Xbee", {xbee, R"({"xbee_channel":"B"})", "{}", blank});
        add("Xbee told", {xbee, told, "{}", told});
        add("Xbee typed",
            {xbee, "{}", R"({"xbee_channel":" 1a ","xbee_pan_id":"xyz"})", R"({"xbee_channel":26,"xbee_pan_id":0})"});
        add("Xbee blank", {xbee, told, R"({"xbee_channel":" ","xbee_pan_id":""})", blank});
    }
    void save()
    {
        QFETCH(QByteArrayList, row);
        load(row.at(0), row.at(1));
        QCOMPARE(message(), QString());
        const QVariantMap typed = json(row.at(2)).toVariantMap();
        for (auto each = typed.begin(); each != typed.end(); ++each) {
            set(each.key(), each.value());
        }
        const auto *radio = find<QGroupBox>(u"WirelessInput"_s);
        const QString kind = row.at(0) == xbee ? u"(Xbee)"_s : u"(RM024)"_s;
        QCOMPARE(radio->isVisible() ? radio->title().section(u' ', 2) : QString(), row.at(0) == cable ? u""_s : kind);
        QCOMPARE(find(u"Xbee"_s)->isVisible(), row.at(0) == xbee);
        QCOMPARE(input(u"wireless_channel"_s)->isEnabledTo(m_panel.get()),
                 !input(u"wireless_auto_scan"_s)->property("checked").toBool());
        QVariantMap expected = json(defaults).toVariantMap();
        expected.insert(json(row.at(0)).toVariantMap());
        expected.insert(json(row.at(3)).toVariantMap());
        QCOMPARE(saved(), expected);
        QCOMPARE(message(), u"Saved. The device is switching to the new settings."_s);
    }

    void refusals()
    {
        m_device.tell(
            {list, "getSettings timeout: Too late.", "getControllerList bad: No.", "getControllerConfig bad: No."});
        panel()->refresh();
        QCOMPARE(message(), u"!Too late."_s);
        panel()->refresh();
        QCOMPARE(message(), u"The device did not list its controllers; scoreboard choices are unavailable."_s);
        QVERIFY(saved().isEmpty());
        QCOMPARE(message(), u"!Choose the scoreboard's maker, model, sport and connection first."_s);
        load(cable, "{}");
        set(u"ethernet_bridge_peer_host"_s, u"not there"_s);
        m_device.tell({"setSettings bad: Refused."});
        QCOMPARE(saved().value(u"ethernet_bridge_peer_host"_s), u"not there"_s);
        QCOMPARE(message(), u"!Refused."_s);
        QCOMPARE(requestsAfter(2600ms), 0);
        load(cable, R"({"ethernet_bridge_peer_host":"told","ethernet_bridge_port":9})");
        QCOMPARE(text(u"Setting_ethernet_bridge_peer_host"_s), u"not there"_s);
        QCOMPARE(saved().value(u"ethernet_bridge_port"_s), 9);
    }

    void reload()
    {
        load(xbee, "{}");
        set(u"xbee_channel"_s, u"c"_s);
        set(u"ethernet_bridge_port"_s, 5);
        m_device.tell({"setSettings never"});
        QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
        find(u"SaveSettings"_s)->setFocus();
        saved();
        QCOMPARE(message(), u"Saving…"_s);
        QVERIFY(!find(u"SaveSettings"_s)->isEnabled());
        set(u"usb_tunnel_port"_s, 7); // not sent, so that it isn't saved either
        m_device.answerHeld();
        QVERIFY(find(u"SaveSettings"_s)->hasFocus());
        QCOMPARE(text(u"Setting_xbee_channel"_s), u"C"_s);
        m_device.tell({list, QByteArray("getControllerConfig ") + cable,
                       R"(getSettings {"xbee_channel":13,"usb_tunnel_port":8})"});
        QCOMPARE(requestsAfter(2300ms), 0);
        QCOMPARE(requestsAfter(400ms), 3);
        QVariantMap expected = json(defaults).toVariantMap();
        expected.insert(json(cable).toVariantMap());
        expected.insert(u"usb_tunnel_port"_s, 7);
        QCOMPARE(saved(), expected);
        m_panel.reset();
        QCOMPARE(requestsAfter(2600ms), 0);
    }

    void changesDuringASave()
    {
        load(xbee, "{}");
        m_device.tell({list, QByteArray("getControllerConfig ") + xbee, "getSettings never"});
        panel()->refresh();
        saved();
        m_device.answerHeld(); // of the loading
        QCOMPARE(message(), u"Saved. The device is switching to the new settings."_s);
        m_device.tell({"setSettings never"});
        saved();
        set(u"manufacturer"_s, u"OES"_s);
        m_device.answerHeld();
        m_device.tell({list, QByteArray("getControllerConfig ") + xbee, "getSettings {}"});
        QCOMPARE(requestsAfter(2700ms), 3);
        QCOMPARE(saved().value(u"manufacturer"_s), u"OES"_s);
    }

    // Of the session or the panel, before, while or after the device answers.
    void deletion()
    {
        const QByteArrayList methods{"getControllerList", "getControllerConfig", "getSettings", "setSettings"};
        for (const QByteArray &method : methods) {
            const auto ask = [this, &method](const QByteArrayList &answers) {
                init();
                load(cable, "{}");
                m_device.tell(answers);
                m_device.onRequest = [this, method, dies = answers.isEmpty()](const QString &called) {
                    if (dies && called == QString::fromLatin1(method)) {
                        m_panel.reset();
                    }
                };
                method == "setSettings" ? panel()->save() : panel()->refresh();
            };
            ask({method + " never", "getSettings never"});
            m_session.reset();
            QCOMPARE(message(), u"!Disconnected"_s);
            QVERIFY(saved().isEmpty() && find(u"SaveSettings"_s)->isEnabled());
            QCOMPARE(message(), u"!Not connected to a device."_s);
            ask({method + " never"});
            m_panel.reset();
            m_device.answerHeld();
            ask({});
            QVERIFY(!m_panel);
        }
    }
};

QTEST_MAIN(TestSettingsPanel)
#include "tst_settings_panel.moc"
