// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "ui/manager/PanelBase.h"

#include <QJsonArray>
#include <QTimer>

class QPushButton;
class QVBoxLayout;

namespace tallyforge {

class ControllerGroup;
class SettingsForm;
class WirelessInputGroup;

/// All settings of a device in one form, loaded and saved as a whole. What the user has changed and
/// not saved yet survives loading, except that a new choice of scoreboard loads the radio's
/// settings anew.
class SettingsPanel final : public PanelBase
{
    Q_OBJECT

public:
    SettingsPanel(DeviceSession *session, QWidget *parent);

    void refresh() override;
    void save();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void addConnections(QVBoxLayout *column);
    void addWirelessOutput(QVBoxLayout *column);
    void addEthernetBridge(QVBoxLayout *column);
    void addUsbTunnel(QVBoxLayout *column);
    SettingsForm *addForm(QVBoxLayout *column, const QString &title);
    SettingsForm *addCheckableForm(QVBoxLayout *column, QLatin1StringView key,
                                   const QString &title);
    // The steps of loading: each asks for the next reply.
    void loadConfig(const QJsonArray &controllers);
    void loadSettings(const QJsonArray &controllers, const QJsonObject &config);
    void showAll(const QJsonArray &controllers, const QJsonObject &config);
    [[nodiscard]] QJsonObject values() const;
    void onSaved(const RpcResult &result, const QJsonObject &sent);

    QList<SettingsForm *> m_forms; // all but the radio's
    ControllerGroup *m_controller = nullptr;
    WirelessInputGroup *m_wirelessInput = nullptr;
    QPushButton *m_saveButton = nullptr;
    QJsonObject m_settings; // as last loaded or saved
    Generation m_loading;
    QTimer m_reload; // once the device has had time to switch over
};

} // namespace tallyforge
