// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QList>
#include <QPointer>
#include <QTabWidget>
#include <QTimer>

#include <functional>

namespace tallyforge {

class DeviceSession;
class PanelBase;
class SettingsStore;

/// The tabs about one connected device. Each visit to a tab loads it anew. The tabs' panels are
/// made one after the other when OBS has nothing else to do, or on the first visit if that comes
/// earlier.
class DeviceManager final : public QTabWidget
{
    Q_OBJECT

public:
    /// Neither is owned. The settings must outlive the manager.
    DeviceManager(DeviceSession *session, SettingsStore &settings, QWidget *parent);

    /// Goes to a tab and loads it, also when it was in view already.
    void showPage(int index);
    /// Takes itself out of view and deletes itself, bit by bit. Nobody may use it any more.
    void leave();

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
    void makePanel(int index);
    void makeAhead();
    void dropNext();

    const QPointer<DeviceSession> m_session;
    QList<Maker> m_makers; // these two are in the tabs' order
    QList<PanelBase *> m_panels;
    QTimer m_idle; // a turn of the event loop for each piece of work
};

} // namespace tallyforge
