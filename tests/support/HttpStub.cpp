// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "tests/support/HttpStub.h"

#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge::test {

HttpStub::HttpStub()
{
    connect(this, &QTcpServer::newConnection, this, [this] {
        QTcpSocket *socket = nextPendingConnection();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
    });
    listen(QHostAddress::LocalHost);
}

QString HttpStub::url() const
{
    return u"http://127.0.0.1:%1"_s.arg(serverPort());
}

QList<QByteArray> HttpStub::asked() const
{
    QList<QByteArray> result;
    for (const HttpRequest &request : requests) {
        result.append(request.verb + ' ' + request.path);
    }
    return result;
}

void HttpStub::read(QTcpSocket *socket)
{
    const QByteArray bytes = socket->peek(socket->bytesAvailable());
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0) {
        return;
    }
    const QList<QByteArray> lines = bytes.left(headEnd).split('\n');
    const QList<QByteArray> first = lines[0].split(' ');
    HttpRequest request{first[0], first[1], {}, {}};
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray &line = lines[i];
        const qsizetype colon = line.indexOf(':');
        request.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    const qsizetype length = request.headers.value("content-length").toLongLong();
    if (bytes.size() < headEnd + 4 + length) {
        return;
    }
    request.body = bytes.mid(headEnd + 4, length);
    socket->skip(headEnd + 4 + length);
    requests.append(request);

    const HttpReply reply = answer(request);
    if (reply.how == HttpReply::How::Hang) {
        m_hanging.append(socket);
        return;
    }
    if (reply.how == HttpReply::How::Drop) {
        socket->disconnectFromHost();
        return;
    }
    write(socket, reply);
}

void HttpStub::release(const QByteArray &body)
{
    const QList<QPointer<QTcpSocket>> waiting = std::exchange(m_hanging, {});
    for (const QPointer<QTcpSocket> &socket : waiting) {
        if (socket && socket->isOpen()) {
            write(socket, {200, body, {}, HttpReply::How::Answer});
        }
    }
}

void HttpStub::write(QTcpSocket *socket, const HttpReply &reply)
{
    const bool cut = reply.how == HttpReply::How::CutShort;
    const bool forEver = reply.how == HttpReply::How::Drip || reply.how == HttpReply::How::Flood;
    const qsizetype promised = cut ? 10 : forEver ? 1 << 30 : 0;
    socket->write("HTTP/1.1 " + QByteArray::number(reply.status) + " X\r\nContent-Length: " +
                  QByteArray::number(reply.body.size() + promised) + "\r\n" + reply.headers + "\r\n" + reply.body);
    if (cut) {
        socket->disconnectFromHost();
    }
    if (forEver) {
        writeForEver(socket, reply.how == HttpReply::How::Flood);
    }
}

void HttpStub::writeForEver(QTcpSocket *socket, bool fast)
{
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    if (!fast) {
        auto *timer = new QTimer(socket);
        timer->callOnTimeout(socket, [socket] { socket->write(" "); });
        timer->start(10);
        return;
    }
    connect(socket, &QTcpSocket::bytesWritten, this, [this, socket] {
        if (socket->bytesToWrite() == 0) {
            flooded += socket->write(QByteArray(1 << 20, ' '));
        }
    });
}

} // namespace tallyforge::test
