// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/RestartBanner.h"

#include "ui/widgets/Announcement.h"

#include <QLabel>
#include <QVBoxLayout>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int restartSeconds = 15;

QString row(int points, const QString &text)
{
    return u"<div style='font-size:%1pt; font-weight:bold'>%2</div>"_s.arg(points).arg(text);
}

QLabel *wrapped(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::RichText);
    label->setWordWrap(true);
    label->setMinimumWidth(1);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

RestartBanner::RestartBanner(QWidget *parent)
    : QFrame(parent)
    , m_text(wrapped(this))
    , m_noteLabel(wrapped(this))
{
    constexpr int side = 16; // pixels
    constexpr int top = 14;
    setObjectName(u"tallyforgeRestartBanner"_s);
    m_text->setObjectName(u"tallyforgeRestartText"_s);
    m_noteLabel->setObjectName(u"tallyforgeRestartNote"_s);
    setStyleSheet(u"QFrame { border: 3px solid #e8a317; border-radius: 8px; "
                  "background: rgba(232, 163, 23, 0.18); }"
                  "QLabel { border: none; background: transparent; }"_s);
    m_text->setAlignment(Qt::AlignCenter);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(side, top, side, top);
    column->addWidget(m_text);
    column->addWidget(m_noteLabel);
    hide();
    m_timer.setInterval(std::chrono::seconds(1));
    connect(&m_timer, &QTimer::timeout, this, &RestartBanner::tick);
}

void RestartBanner::start(const QString &headline, const QString &note)
{
    m_headline = headline;
    m_note = note;
    m_seconds = restartSeconds;
    m_timer.start();
    showTexts();
    announce(this, m_headline, true);
}

void RestartBanner::tick()
{
    if (m_seconds-- < 2) {
        m_timer.stop();
    }
    showTexts();
}

void RestartBanner::showTexts()
{
    constexpr int small = 15; // points
    constexpr int large = 20;
    constexpr int largest = 26;
    const QString headline = row(small, m_headline.toHtmlEscaped());
    if (m_seconds > 0) {
        m_text->setText(headline + row(largest, QString::number(m_seconds)) +
                        row(small, tr("Wait %1 seconds, then close this window and reopen it to "
                                      "reconnect to the device.")
                                       .arg(m_seconds)));
    } else {
        m_text->setText(headline + row(large, tr("The device should be back.")) +
                        row(small, tr("Close this window and reopen it to reconnect to the "
                                      "device.")));
    }
    m_noteLabel->setText(m_note.toHtmlEscaped().replace(u'\n', u"<br>"_s));
    m_noteLabel->setVisible(!m_note.isEmpty());
    show();
}

} // namespace tallyforge
