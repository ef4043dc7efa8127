// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/ReceiverRequest.h"

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds answerLimit{5000};

} // namespace

ReceiverRequest::ReceiverRequest(QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(answerLimit);
    connect(&m_timer, &QTimer::timeout, this,
            [this] { finish(false, {}, tr("The receiver did not answer")); });
}

void ReceiverRequest::start(const QString &key, bool generateKey, int channel,
                            const Callback &wanted)
{
    // A caller may pass none, but an empty m_callback means that no request is under way.
    const Callback callback = wanted ? wanted : [](bool, const QString &, const QString &) {};
    if (m_callback) {
        callback(false, {}, tr("Another receiver request is still in progress"));
        return;
    }
    QJsonObject message{{u"t"_s, u"rx_set"_s}};
    if (generateKey) {
        message.insert(u"generate_key"_s, true);
    } else if (!key.isEmpty()) {
        message.insert(u"key"_s, key.trimmed());
    }
    if (channel >= 1) {
        message.insert(u"channel"_s, channel);
    }
    if (message.size() == 1) {
        callback(false, {}, tr("Give a key, ask for a new key, or choose a channel"));
        return;
    }
    m_callback = callback;
    m_timer.start();
    Q_EMIT send(message);
}

void ReceiverRequest::onReply(const QJsonObject &reply)
{
    if (reply.value("t"_L1).toString() != "rx_error"_L1 && reply.value("ok"_L1).toBool(true)) {
        finish(true, reply.value("key"_L1).toString(), {});
    } else {
        finish(false, {},
               reply.value("error"_L1).toString(tr("The receiver refused the settings")));
    }
}

void ReceiverRequest::finish(bool ok, const QString &key, const QString &error)
{
    m_timer.stop();
    if (const Callback callback = std::exchange(m_callback, {})) {
        callback(ok, key, error);
    }
}

} // namespace tallyforge
