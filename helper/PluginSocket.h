// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/LineBuffer.h"
#include "helper/Failure.h"

#include <QJsonObject>
#include <QObject>
#include <QTcpSocket>
#include <QTimer>

namespace tallyforge::helper {

/// The line to the plug-in that has started this program: JSON objects, one a line.
class PluginSocket final : public QObject
{
    Q_OBJECT

public:
    explicit PluginSocket(QObject *parent = nullptr);

    /// Comes to the plug-in's port on loopback and proves itself.
    void open(quint16 port, const QString &token);

    void replyOk(int id, const QJsonObject &result = {});
    void replyFailed(int id, const Failure &failure);
    void sendEvent(const QString &name, const QString &key, const QString &value);

Q_SIGNALS:
    void operation(const QString &name, int id, const QJsonObject &parameters);
    /// The plug-in has gone, or was never there.
    void ended();

private:
    void send(const QJsonObject &object);
    void read();
    void end();

    QTcpSocket m_socket;
    LineBuffer m_buffer;
    QTimer m_connectTimer;
    bool m_ended = false;
};

} // namespace tallyforge::helper
