// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/HeldCloses.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>

#include <utility>

namespace tallyforge {

HeldCloses::HeldCloses(QEventLoop *loop)
    : m_loop(loop)
{
    QCoreApplication::instance()->installEventFilter(this);
}

HeldCloses::~HeldCloses()
{
    for (const QPointer<QObject> &window : std::as_const(m_windows)) {
        if (window) {
            QMetaObject::invokeMethod(
                window, [window] { QMetaObject::invokeMethod(window, "close"); },
                Qt::QueuedConnection);
        }
    }
}

bool HeldCloses::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close) {
        return QObject::eventFilter(watched, event);
    }
    event->ignore();
    if (!m_windows.contains(watched)) {
        m_windows.append(watched);
    }
    m_loop->quit();
    return true;
}

} // namespace tallyforge
