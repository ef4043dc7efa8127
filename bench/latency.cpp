// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Hosts libobs with the plug-in and shows three texts, one below the other: OBS's own, the
// plug-in's, and OBS's own that reads a file. Prints a line of JSON for each finished frame in
// which one of them looks different. Takes words on its input: "plain TEXT" shows a text in the
// first one, "cloud" follows the device over the portal, "usb PATH PASSWORD" over a cable; the end
// of the input ends it.
// Usage: bench-latency CONFIG_FOLDER DEVICE_ID TEXT_FILE

#include "bench/Stage.h"
#include "device/usb/UsbLink.h"
#include "plugin/App.h"
#include "sources/sources.h"
#include "tests/support/FakeModule.h"
#include "tests/support/ObsHost.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <thread>

using namespace tallyforge;
using namespace tallyforge::bench;
using namespace Qt::StringLiterals;

namespace {

constexpr int fontSize = 64;
constexpr int bands = 3;
constexpr float bandHeight = 120;

void say(const QJsonObject &message)
{
    const QByteArray line = QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fflush(stdout);
}

// On libobs's video thread, which has a whole frame's time for it.
void reportChanges(const QByteArray &picture)
{
    static QByteArray previous;
    const long long at = now();
    const auto bytes = size_t(picture.size() / bands);
    for (size_t band = 0; band < bands && previous.size() == picture.size(); ++band) {
        const size_t begin = band * bytes;
        if (std::memcmp(previous.constData() + begin, picture.constData() + begin, bytes) != 0) {
            say({{u"band"_s, int(band)}, {u"at"_s, at}});
        }
    }
    previous = picture;
}

void sayStatus()
{
    say({{u"status"_s, App::get()->sources()->statusText()},
         {u"live"_s, App::get()->sources()->isLive()}});
}

void followUsb(const QString &path, const QString &password)
{
    auto *session = new DeviceSession(new UsbLink(path), App::get());
    QObject::connect(session, &DeviceSession::stateChanged, session,
                     [session](DeviceSession::State state) {
                         if (state == DeviceSession::State::Ready) {
                             App::get()->sources()->useSession(session, u"a cable"_s);
                         }
                     });
    session->start({password});
}

void obey(const QByteArray &line, obs_source_t *plain, const QString &deviceId)
{
    if (line.startsWith("plain ")) {
        const QByteArray settings = textSettings(fontSize, "\"text\":\"" + line.sliced(6) + '"');
        const long long at = now();
        update(plain, settings);
        say({{u"updated"_s, at}});
    } else if (line == "cloud") {
        App::get()->sources()->useCloud(deviceId);
    } else if (const QStringList words = QString::fromUtf8(line).split(u' ');
               words.value(0) == u"usb") {
        followUsb(words.value(1), words.value(2));
    }
}

void readOrders(obs_source_t *plain, const QString &deviceId)
{
    for (std::string line; std::getline(std::cin, line);) {
        QMetaObject::invokeMethod(qApp, [line = QByteArray::fromStdString(line), plain, deviceId] {
            obey(line, plain, deviceId);
        });
    }
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit);
}

// Returns an error message, null if all went well.
const char *run(test::ObsHost &host, const QString &deviceId, const QByteArray &textFile)
{
    Stage stage;
    const std::array texts{
        stage.add("text_ft2_source_v2", textSettings(fontSize, R"("text":"100 - 900")"), 0, 0),
        stage.add("tallyforge_text",
                  textSettings(fontSize, R"("template":"{home_score} - {away_score}")"), 0,
                  bandHeight),
        stage.add("text_ft2_source_v2",
                  textSettings(fontSize, R"("from_file":true,"text_file":")" + textFile + '"'), 0,
                  2 * bandHeight),
    };
    if (std::find(texts.begin(), texts.end(), nullptr) != texts.end()) {
        return "A text source is missing.";
    }
    QObject::connect(App::get()->sources(), &SourceManager::statusChanged, qApp, sayStatus);
    host.setFrameCallback(reportChanges);
    std::thread orders(readOrders, texts.front(), deviceId);
    QCoreApplication::exec();
    orders.join();
    host.setFrameCallback({});
    return nullptr;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 4) {
        std::fputs("Usage: bench-latency CONFIG_FOLDER DEVICE_ID TEXT_FILE\n", stderr);
        return 2;
    }
    logToStderr();
    test::setConfigFolder(QString::fromLocal8Bit(argv[1]));
    const char *error = "libobs did not start.";
    {
        test::ObsHost host;
        if (host.isUp()) {
            sources_register();
            App::init();
            sources_connect_live_data();
            error = run(host, QString::fromLocal8Bit(argv[2]), argv[3]);
            App::shutdown();
        }
    }
    if (test::ObsHost::shutdown() != 0 && !error) {
        error = "libobs counts memory that was never freed.";
    }
    if (error) {
        std::fprintf(stderr, "%s\n", error);
    }
    return error ? 1 : 0;
}
