// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace tallyforge {

/// Keeps windows open while a local event loop runs inside a call from one of them. Otherwise the
/// call would come back to a window that is gone, or to an OBS that has ended without its sources.
/// A window that is to close ends the wait, and is closed once this object has gone.
class HeldCloses final : public QObject
{
    Q_OBJECT

public:
    /// endWait has the local event loop end; it is called whenever a window is to close.
    explicit HeldCloses(std::function<void()> endWait);
    ~HeldCloses() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const std::function<void()> m_endWait;
    QList<QPointer<QWidget>> m_windows;
};

} // namespace tallyforge
