// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/AnswerPoll.h"

#include <QTimer>

#include <utility>

namespace tallyforge {

AnswerPoll::AnswerPoll(const Rule &rule, Calls calls, QObject *parent)
    : QObject(parent)
    , m_rule(rule)
    , m_calls(std::move(calls))
{
}

void AnswerPoll::start()
{
    m_questions = 0;
    m_failures = 0;
    ask();
}

void AnswerPoll::ask()
{
    m_generation.next();
    ++m_questions;
    if (!m_calls.ask(m_generation.guard([this](const RpcResult &result) { onAnswer(result); }))) {
        end(false, {});
    }
}

void AnswerPoll::onAnswer(const RpcResult &result)
{
    if (!result.ok) {
        if (m_failures++ < m_rule.failures) {
            askAfter(m_rule.failurePause);
        } else {
            end(false, result.errorMessage);
        }
        return;
    }
    m_failures = 0;
    if (m_calls.take(result.result) && m_questions < m_rule.questions) {
        askAfter(m_rule.pause);
    } else {
        end(true, {});
    }
}

void AnswerPoll::askAfter(std::chrono::milliseconds pause)
{
    QTimer::singleShot(pause, this, m_generation.guard([this] { ask(); }));
}

void AnswerPoll::end(bool contact, const QString &error)
{
    const auto call = m_calls.end; // it may delete this
    call(contact, error);
}

} // namespace tallyforge
