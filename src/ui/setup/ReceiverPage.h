// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/setup/SetupPage.h"

class QJsonObject;

namespace tallyforge {

class MessageLine;
class SettingsStore;
class SharePanel;
class UsbLink;

/// Shows how a wireless receiver fares, and pairs it with a device by their common key.
class ReceiverPage final : public SetupPage
{
    Q_OBJECT

public:
    /// settings isn't owned and must outlive the page.
    ReceiverPage(SettingsStore &settings, QWidget *parent);

    /// Shows the receiver's report of itself and what is shared over its link, which isn't owned.
    void showReceiver(UsbLink *link);
    /// Forgets what has been entered, because another receiver comes.
    void clear();
    void showSending();
    /// The receiver has not taken the key. The error stays in view beside the key until the user
    /// does something about it, because the next report replaces the status.
    void showRefusal(const QString &error);
    /// The receiver has taken a key; it isn't empty if the receiver has made it.
    void showPaired(const QString &newKey);
    /// Tells the user the key that the receiver has made.
    [[nodiscard]] static QString newKeyText(const QString &key);

Q_SIGNALS:
    void manageRequested();
    void newKeyRequested();
    void keyEntered(const QString &key);
    void useRequested();

private:
    void addPairing();
    void showStatus(const QString &text);
    void chooseReturnButton(const QString &key);

    ThemedLabel *m_status = nullptr;
    SharePanel *m_share = nullptr;
    TextField *m_key = nullptr;
    QPushButton *m_useKey = nullptr;
    MessageLine *m_refusal = nullptr;
    QPushButton *m_use = nullptr;
};

} // namespace tallyforge
