// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QEventLoop;

namespace tallyforge {

/// Keeps windows from closing while a local event loop runs, which that ends at once, and has them
/// closed afterwards. The loop runs inside a call from one of these windows, which would otherwise
/// come back to a window that is gone, or to an OBS that has ended without its sources.
class HeldCloses final : public QObject
{
    Q_OBJECT

public:
    explicit HeldCloses(QEventLoop *loop);
    ~HeldCloses() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QEventLoop *const m_loop;
    QList<QPointer<QObject>> m_windows;
};

} // namespace tallyforge
