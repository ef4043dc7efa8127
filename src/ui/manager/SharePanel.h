// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/Group.h"

#include <QPointer>
#include <QTimer>

class QCheckBox;

namespace tallyforge {

class SettingsStore;
class ThemedLabel;
class UsbLink;

/// Lets a device on a USB cable reach the cloud through this computer, and says how far that has
/// got. Hidden without a USB link. The choice is one for all devices.
class SharePanel final : public Group
{
    Q_OBJECT

public:
    /// The settings aren't owned and must outlive the panel.
    SharePanel(SettingsStore &settings, QWidget *parent);

    /// The link isn't owned. With receiverMode it leads to a wireless receiver.
    void setLink(UsbLink *link, bool receiverMode);

private:
    void onToggled(bool checked);
    void update();

    SettingsStore &m_settings;
    QPointer<UsbLink> m_link;
    bool m_receiverMode = false;
    QTimer m_timer; // traffic that no signal tells of
    QCheckBox *m_share;
    ThemedLabel *m_status;
};

/// An amount of data for the user, as "512 B", "1.5 KB" or "2.0 MB".
[[nodiscard]] QString byteCount(qint64 bytes);

} // namespace tallyforge
