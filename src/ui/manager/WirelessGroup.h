// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceTypes.h"
#include "ui/widgets/Group.h"

class QLineEdit;
class QPushButton;

namespace tallyforge {

class ThemedLabel;

/// Says whether a device uses Wi-Fi or its radio to a wireless receiver, and lets the user change
/// that. Hidden for a device without such a radio.
class WirelessGroup final : public Group
{
    Q_OBJECT

public:
    explicit WirelessGroup(QWidget *parent);

    void showLink(const WirelessLink &link);
    [[nodiscard]] const WirelessLink &link() const { return m_link; }
    /// The device has been told to change over, and restarts: the link is what it will be then.
    void hideForRestart(bool transmitting);
    /// Asks for the receiver's address and key, unless it did so before; then false.
    bool askForReceiver();
    /// As typed, without blanks around them.
    [[nodiscard]] QString address() const;
    [[nodiscard]] QString key() const;
    void setBusy(bool busy);

Q_SIGNALS:
    void actionWanted();

private:
    void addForm();
    [[nodiscard]] QString situation() const;
    [[nodiscard]] QString action() const;

    WirelessLink m_link;
    bool m_formWanted = false;
    ThemedLabel *m_status;
    QWidget *m_form;
    QLineEdit *m_address = nullptr;
    QLineEdit *m_key = nullptr;
    QPushButton *m_action = nullptr;
};

} // namespace tallyforge
