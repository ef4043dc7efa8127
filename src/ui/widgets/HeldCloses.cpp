// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/HeldCloses.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace tallyforge {

HeldCloses::HeldCloses(std::function<void()> endWait)
    : m_endWait(std::move(endWait))
{
    QCoreApplication::instance()->installEventFilter(this);
}

HeldCloses::~HeldCloses()
{
    for (const QPointer<QWidget> &window : std::as_const(m_windows)) {
        if (window) {
            QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
        }
    }
}

bool HeldCloses::eventFilter(QObject *watched, QEvent *event)
{
    auto *window = qobject_cast<QWidget *>(watched);
    // A tool tip closes by itself and takes nothing away.
    if (event->type() != QEvent::Close || window == nullptr || !window->isWindow() ||
        window->windowType() == Qt::ToolTip) {
        return QObject::eventFilter(watched, event);
    }
    event->ignore();
    if (!m_windows.contains(window)) {
        m_windows.append(window);
    }
    m_endWait();
    return true;
}

} // namespace tallyforge
