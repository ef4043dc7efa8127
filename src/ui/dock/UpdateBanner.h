// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/PluginUpdater.h"

#include <QFrame>
#include <QString>

class QProgressBar;
class QPushButton;

namespace tallyforge {

class ThemedLabel;

/// All of the updater that the page shows.
struct UpdateView
{
    PluginUpdater::State state = PluginUpdater::State::Idle;
    QString message;
    QString version; ///< the latest one
    QString notes;
    QString packageUrl; ///< empty when no version is on offer
    int progress = 0;   ///< percent
    bool canInstallInPlace = false;
    bool outputActive = false; ///< whether OBS is streaming or recording
    qint64 lastCheck = 0;      ///< seconds since the epoch, 0 for never

    [[nodiscard]] bool isBusy() const;
    /// Whether the user has to wait before anything new can be asked of the updater.
    [[nodiscard]] bool isOccupied() const
    {
        return isBusy() || state == PluginUpdater::State::Installed;
    }
};

/// The notice of a newer version at the head of the page, with what can be done about it.
class UpdateBanner final : public QFrame
{
    Q_OBJECT

public:
    explicit UpdateBanner(QWidget *parent);

    void refresh(const UpdateView &view);

Q_SIGNALS:
    void installRequested();
    void downloadPageRequested();

private:
    void showButtons(const UpdateView &view);
    void showProgress(const UpdateView &view);

    ThemedLabel *m_title = nullptr;
    ThemedLabel *m_notes = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_install = nullptr;
    QPushButton *m_download = nullptr;
};

} // namespace tallyforge
