// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/PluginUpdater.h"

#include <QObject>
#include <QString>

namespace tallyforge {

class SettingsStore;

/// Has the updater look for a new version 20 seconds after OBS's start and then once a day, if the
/// user wants that, and notes the result in the settings and the log. It tells the updater the
/// version of this OBS and the place of the plug-in.
class UpdateSchedule final : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive it. stagingDir is the folder for what is downloaded.
    UpdateSchedule(PluginUpdater *updater, SettingsStore *settings, const QString &stagingDir,
                   QObject *parent);

    /// Looks for a newer version; with manual false only if the user wants that.
    void check(bool manual);

private:
    void configure(const QString &stagingDir);
    void onUpdaterChanged();

    PluginUpdater *const m_updater;
    SettingsStore *const m_settings;
};

} // namespace tallyforge
