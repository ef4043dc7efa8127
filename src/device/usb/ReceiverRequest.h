// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

namespace tallyforge {

/// The one request to a wireless receiver that may be under way. Main thread.
class ReceiverRequest final : public QObject
{
    Q_OBJECT

public:
    /// Exactly one call, or none if the request's owner is deleted before: true and the key in use,
    /// or false and a sentence for the user.
    using Callback = std::function<void(bool ok, const QString &key, const QString &error)>;

    explicit ReceiverRequest(QObject *parent);

    /// Gives the receiver a key, has it make one, or sets its channel (from 1 on). Fails at once
    /// while another request is under way.
    void start(const QString &key, bool generateKey, int channel, const Callback &callback);
    /// The receiver's answer ends the request that is under way, if one is.
    void onReply(const QJsonObject &reply);

Q_SIGNALS:
    /// A control message for the receiver.
    void send(const QJsonObject &message);

private:
    void finish(bool ok, const QString &key, const QString &error);

    Callback m_callback; // empty when no request is under way
    QTimer m_timer;
};

} // namespace tallyforge
