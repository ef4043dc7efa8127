// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "bench/Bare.h"

#include "device/ble/BleFragments.h"
#include "device/usb/AdminFragments.h"
#include "device/usb/SerialPlatform.h"
#include "device/usb/UsbFrame.h"
#include "tests/support/BleHelperDouble.h"

#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <array>
#include <utility>

namespace tallyforge::bench {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds pollInterval = 15ms; // SerialPort's

QByteArray compact(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

class BareUsb final : public Bare
{
public:
    BareUsb(const QString &path, const QString &password, const Done &ready)
        : m_port(serial_platform::openPort(path, 115200, nullptr))
    {
        connect(&m_poll, &QTimer::timeout, this, &BareUsb::read);
        m_poll.start(pollInterval);
        prepare(compact({{u"id"_s, 1},
                         {u"method"_s, u"login"_s},
                         {u"params"_s, QJsonObject{{u"password"_s, password}}}}));
        m_frames.prepend(buildCtrlFrame({{u"t"_s, u"hello"_s}, {u"streams"_s, 1}}));
        exchange(ready);
    }
    ~BareUsb() override { serial_platform::closePort(m_port); }

    void prepare(const QByteArray &request) override { m_frames = buildAdminFrames(request); }
    void exchange(const Done &done) override
    {
        m_done = done;
        for (const QByteArray &frame : std::as_const(m_frames)) {
            if (!serial_platform::writeAll(m_port, frame)) {
                done(false);
                return;
            }
        }
    }

private:
    // What finds the end of the answer takes microseconds of the milliseconds measured.
    void read()
    {
        std::array<char, 4096> buffer; // NOLINT: filled by the read
        qint64 count = 0;
        while ((count = serial_platform::readSome(m_port, buffer.data(), buffer.size())) > 0) {
            const QList<UsbFrame> frames = m_parser.feed(QByteArray(buffer.data(), count));
            for (const UsbFrame &frame : frames) {
                const QByteArray text =
                    frame.type == UsbFrame::Admin ? m_texts.feed(frame.payload) : QByteArray();
                if (!text.isEmpty()) {
                    m_done(text.contains("\"ok\":true"));
                }
            }
        }
    }

    serial_platform::Handle *const m_port;
    QTimer m_poll;
    QList<QByteArray> m_frames;
    UsbFrameParser m_parser;
    AdminReassembler m_texts;
    Done m_done;
};

class BareHttp final : public Bare
{
public:
    BareHttp(const QString &address, const QString &password, const Done &ready)
        : m_request(QUrl(u"http://"_s + address + u"/state"))
    {
        QNetworkRequest login(QUrl(u"http://"_s + address + u"/login"));
        login.setRawHeader("Accept", "application/json");
        login.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
        QNetworkReply *reply = m_network.post(login, compact({{u"password"_s, password}}));
        connect(reply, &QNetworkReply::finished, this, [this, reply, ready] {
            const QJsonObject body = QJsonDocument::fromJson(reply->readAll()).object();
            m_request.setRawHeader("Accept", "application/json");
            m_request.setRawHeader("Cookie",
                                   reply->rawHeader("Set-Cookie").split(';').constFirst());
            m_request.setRawHeader("X-CSRF-Token", body.value(u"csrf_token"_s).toString().toUtf8());
            reply->deleteLater();
            ready(body.contains(u"csrf_token"_s));
        });
        for (const auto attribute : {QNetworkRequest::CookieLoadControlAttribute,
                                     QNetworkRequest::CookieSaveControlAttribute}) {
            m_request.setAttribute(attribute, QNetworkRequest::Manual);
        }
    }

    void prepare(const QByteArray &) override {}
    void exchange(const Done &done) override
    {
        QNetworkReply *reply = m_network.get(m_request);
        connect(reply, &QNetworkReply::finished, this, [reply, done] {
            const bool ok = reply->error() == QNetworkReply::NoError && !reply->readAll().isEmpty();
            reply->deleteLater();
            done(ok);
        });
    }

private:
    QNetworkAccessManager m_network;
    QNetworkRequest m_request;
};

class BareBle final : public Bare
{
public:
    BareBle(HelperThread *helper, const Done &ready)
        : m_helper(helper)
        , m_done(ready)
        , m_listening(m_server.listen(QHostAddress::LocalHost))
    {
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            m_socket = m_server.nextPendingConnection();
            m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
            connect(m_socket, &QTcpSocket::readyRead, this, &BareBle::read);
        });
        m_helper->visit(m_server.serverPort());
    }

    void prepare(const QByteArray &request) override
    {
        m_lines.clear();
        const QList<QByteArray> writes = bleEncodeRequest(request, m_helper->writePayload(), 1);
        for (const QByteArray &write : writes) {
            m_lines.append(
                test::BleHelperDouble::line({{u"b64"_s, QString::fromLatin1(write.toBase64())},
                                             {u"op"_s, u"write"_s},
                                             {u"reqId"_s, 1}}));
        }
        const QByteArray answer = m_helper->answerTo(QJsonDocument::fromJson(request).object());
        m_expected = writes.size() + bleEncodeRequest(answer, m_helper->writePayload(), 1).size();
    }
    void exchange(const Done &done) override
    {
        m_done = done;
        m_received = 0;
        send(0);
    }

private:
    void read()
    {
        m_received += m_socket->readAll().count('\n');
        if (m_received == m_expected) {
            m_done(m_listening);
        } else if (m_received < m_lines.size()) {
            send(m_received); // the one before is confirmed
        }
    }
    void send(qsizetype index)
    {
        m_socket->write(m_lines[index]);
        m_socket->flush();
    }

    HelperThread *const m_helper;
    Done m_done;
    QTcpServer m_server;
    const bool m_listening;
    QTcpSocket *m_socket = nullptr; // the server's child
    QList<QByteArray> m_lines;
    qsizetype m_received = 0;
    qsizetype m_expected = 1; // the hello
};

} // namespace

std::unique_ptr<Bare> bareUsb(const QString &path, const QString &password, const Bare::Done &ready)
{
    return std::make_unique<BareUsb>(path, password, ready);
}

std::unique_ptr<Bare> bareHttp(const QString &address, const QString &password,
                               const Bare::Done &ready)
{
    return std::make_unique<BareHttp>(address, password, ready);
}

std::unique_ptr<Bare> bareBle(HelperThread *helper, const Bare::Done &ready)
{
    return std::make_unique<BareBle>(helper, ready);
}

HelperThread::HelperThread(int writePayload, std::chrono::milliseconds delay,
                           const QJsonObject &state)
    : m_writePayload(writePayload)
    , m_delay(delay)
    , m_state(state)
{
    start();
    m_running.acquire();
}

HelperThread::~HelperThread()
{
    quit();
    wait();
}

QString HelperThread::path() const
{
    return m_started->path();
}

QByteArray HelperThread::answerTo(const QJsonObject &request) const
{
    const bool plain = request.value(u"params"_s).toObject().isEmpty();
    return compact({{u"id"_s, request.value(u"id"_s)},
                    {u"ok"_s, true},
                    {u"result"_s, plain ? m_state : QJsonObject()}});
}

void HelperThread::visit(quint16 port)
{
    QMetaObject::invokeMethod(m_inside, [this, port] {
        m_visitor->port = port;
        m_visitor->come();
    });
}

void HelperThread::run()
{
    QObject inside;
    test::BleHelperDouble started;
    test::BleHelperDouble visitor;
    for (test::BleHelperDouble *helper : {&started, &visitor}) {
        helper->writePayload = m_writePayload;
        helper->onRequest = [this, helper](const QJsonObject &request) {
            helper->notify(answerTo(request));
        };
        if (m_delay > 0ms) {
            helper->onOp = [this, helper](const QJsonObject &op) {
                QTimer::singleShot(m_delay, Qt::PreciseTimer, m_inside,
                                   [helper, op] { helper->answer(op); });
            };
        }
    }
    m_inside = &inside;
    m_started = &started;
    m_visitor = &visitor;
    m_running.release();
    exec();
}

} // namespace tallyforge::bench
