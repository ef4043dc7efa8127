// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/usb/UsbFrame.h"
#include "tests/support/Pty.h"

#include <QTimer>

#include <algorithm>
#include <functional>

namespace tallyforge::test {

/// The far end of a UsbLink: everything that the link sends, and what the test answers to it.
class UsbPeer
{
public:
    explicit UsbPeer(Pty &pty)
        : m_pty(pty)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { read(); });
        m_timer.start(1);
    }
    void read()
    {
        const QList<UsbFrame> all = m_parser.feed(m_pty.take());
        for (const UsbFrame &frame : all) {
            frames.append(frame);
            if (onFrame) {
                onFrame(frame);
            }
        }
    }
    void ctrl(const QByteArray &text) const { m_pty.send(buildFrame(UsbFrame::Ctrl, text)); }
    [[nodiscard]] qsizetype count(unsigned char type, const QByteArray &part = {}) const
    {
        return std::count_if(frames.begin(), frames.end(),
                             [&](const UsbFrame &frame) { return frame.type == type && frame.payload.contains(part); });
    }

    QList<UsbFrame> frames;
    std::function<void(const UsbFrame &)> onFrame;

private:
    Pty &m_pty;
    UsbFrameParser m_parser;
    QTimer m_timer;
};

} // namespace tallyforge::test
