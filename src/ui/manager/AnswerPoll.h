// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/RpcClient.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <limits>

namespace tallyforge {

/// Follows something lengthy that a device does, by asking the device the same question again and
/// again. It bears that the device falls silent for a while, because a device that restarts does.
class AnswerPoll final : public QObject
{
    Q_OBJECT

public:
    struct Rule
    {
        std::chrono::milliseconds pause; ///< between an answer and the next question
        int questions = std::numeric_limits<int>::max(); ///< until it ends in any case
        int failures = 0;                                ///< in a row that don't end it
        std::chrono::milliseconds failurePause{0};
    };
    struct Calls
    {
        /// Asks the device. Returns false if there is none any more; no answer may come then.
        std::function<bool(const RpcClient::Callback &callback)> ask;
        /// Takes a good answer and returns whether the device is still at it.
        std::function<bool(const QJsonObject &answer)> take;
        /// The poll has ended; contact says whether the device answered in the end, and error why
        /// it didn't. The poll may be started again or deleted in here.
        std::function<void(bool contact, const QString &error)> end;
    };

    AnswerPoll(const Rule &rule, Calls calls, QObject *parent);

    /// Asks the first question. One that runs already begins anew.
    void start();

private:
    void ask();
    void onAnswer(const RpcResult &result);
    void end(bool contact, const QString &error);
    void askAfter(std::chrono::milliseconds pause);

    const Rule m_rule;
    const Calls m_calls;
    Generation m_generation; // begins with each question
    int m_questions = 0;
    int m_failures = 0; // in a row
};

} // namespace tallyforge
