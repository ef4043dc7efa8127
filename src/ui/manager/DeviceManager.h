// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QList>
#include <QTabWidget>

namespace tallyforge {

class DeviceSession;
class PanelBase;

/// The tabs about one connected device. Each visit to a tab loads it anew.
class DeviceManager final : public QTabWidget
{
    Q_OBJECT

public:
    /// The session isn't owned.
    DeviceManager(DeviceSession *session, QWidget *parent);

    /// Goes to a tab and loads it, also when it was in view already.
    void showPage(int index);

private:
    void add(PanelBase *panel, const QString &title);
    void refreshPage(int index);

    QList<PanelBase *> m_panels; // in the tabs' order
};

} // namespace tallyforge
