// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QList>
#include <QPointer>
#include <QTabWidget>

#include <functional>

namespace tallyforge {

class DeviceSession;
class PanelBase;
class SettingsStore;

/// The tabs about one connected device. Each visit to a tab loads it anew; a tab's panel is made on
/// the first visit, so that opening them all at once doesn't hold OBS up.
class DeviceManager final : public QTabWidget
{
    Q_OBJECT

public:
    /// Neither is owned. The settings must outlive the manager.
    DeviceManager(DeviceSession *session, SettingsStore &settings, QWidget *parent);

    /// Goes to a tab and loads it, also when it was in view already.
    void showPage(int index);

Q_SIGNALS:
    /// See SecurityPanel. Both are secrets.
    void apiToken(const QString &token);
    void passwordChanged(const QString &password);
    /// See CloudPanel.
    void deviceIdChanged();

private:
    using Maker = std::function<PanelBase *(QWidget *parent)>;

    void add(const QString &title, const Maker &make);
    template <class Panel> Maker maker();
    PanelBase *makeSecurity(QWidget *parent);
    PanelBase *makeCloud(SettingsStore &settings, QWidget *parent);
    void refreshPage(int index);

    const QPointer<DeviceSession> m_session;
    QList<Maker> m_makers; // these two are in the tabs' order
    QList<PanelBase *> m_panels;
};

} // namespace tallyforge
