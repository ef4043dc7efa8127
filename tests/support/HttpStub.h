// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QHash>
#include <QList>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>

namespace tallyforge::test {

struct HttpRequest
{
    QByteArray verb;
    QByteArray path;
    QHash<QByteArray, QByteArray> headers; // names in lower case
    QByteArray body;
};

struct HttpReply
{
    enum class How {
        Answer,
        Hang,
        CutShort,
        Drop,
        Drip,  // after the body come blanks, one by one, for ever
        Flood, // after the body come blanks, as fast as they're taken, for ever
    };

    int status = 200;
    QByteArray body = "{}";
    QByteArray headers = ""; // whole lines, each with its "\r\n"
    How how = How::Answer;
};

/// A web server on loopback that records each request and answers as the test says.
class HttpStub final : public QTcpServer
{
public:
    HttpStub();

    [[nodiscard]] QString url() const;
    /// The paths that were asked, each behind its verb, in order.
    [[nodiscard]] QList<QByteArray> asked() const;

    /// Answers all requests that hang with 200 and a body.
    void release(const QByteArray &body);

    QList<HttpRequest> requests;
    qint64 flooded = 0; // bytes of all floods
    std::function<HttpReply(const HttpRequest &)> answer = [](const HttpRequest &) { return HttpReply{}; };

private:
    void read(QTcpSocket *socket);
    void write(QTcpSocket *socket, const HttpReply &reply);
    void writeForEver(QTcpSocket *socket, bool fast);

    QList<QPointer<QTcpSocket>> m_hanging;
};

} // namespace tallyforge::test
