// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/ReceiverPage.h"

#include "device/usb/UsbLink.h"
#include "ui/manager/SharePanel.h"
#include "ui/widgets/Announcement.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/TextField.h"
#include "ui/widgets/ThemedLabel.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace tallyforge {

ReceiverPage::ReceiverPage(SettingsStore &settings, QWidget *parent)
    : SetupPage(Content::IsScrolled, parent)
{
    addTitle(tr("Wireless receiver"));
    m_status = addText(u"tallyforgeReceiverStatus"_s);
    m_share = new SharePanel(settings, content());
    column()->addWidget(m_share);
    const QPushButton *manage =
        addButton(u"tallyforgeManagePaired"_s,
                  tr("Set up or manage the paired Tallyforge device through this receiver…"));
    connect(manage, &QPushButton::clicked, this, &ReceiverPage::manageRequested);
    addPairing();
    column()->addStretch();
    m_use = addButton(u"tallyforgeUseReceiver"_s, tr("Use this receiver's live scores in OBS"));
    connect(m_use, &QPushButton::clicked, this, &ReceiverPage::useRequested);
    setFirstField(m_use);
    chooseReturnButton({});
}

void ReceiverPage::addPairing()
{
    const QPushButton *generate = addButton(u"tallyforgeNewKey"_s, tr("Make a new pairing key"));
    connect(generate, &QPushButton::clicked, this, &ReceiverPage::newKeyRequested);
    m_key = addField(u"tallyforgePairingKey"_s, tr("…or enter an existing 32-character key"));
    connect(m_key, &QLineEdit::textChanged, this, &ReceiverPage::chooseReturnButton);
    m_useKey = addButton(u"tallyforgeUseKey"_s, tr("Use this key"));
    connect(m_useKey, &QPushButton::clicked, this, [this] { Q_EMIT keyEntered(m_key->text()); });
    m_refusal = new MessageLine(content());
    m_refusal->setObjectName(u"tallyforgePairingRefusal"_s);
    column()->addWidget(m_refusal);
    connect(m_key, &QLineEdit::textChanged, m_refusal, [this] { m_refusal->tell({}, false); });
}

// Return in the field is about the key.
void ReceiverPage::chooseReturnButton(const QString &key)
{
    setReturnButton(key.isEmpty() ? m_use : m_useKey);
}

void ReceiverPage::showReceiver(UsbLink *link)
{
    m_share->setLink(link, true);
    const QJsonObject report = link->receiverStatus();
    QStringList lines{report.value("configured"_L1).toBool() ? tr("Paired with a device.")
                                                             : tr("Not paired yet.")};
    if (report.contains("link"_L1)) {
        lines.append(report.value("link"_L1).toBool() ? tr("Receiving from the device now.")
                                                      : tr("Not hearing the device right now."));
    }
    if (report.contains("rssi"_L1)) {
        lines.append(tr("Signal: %1 dBm").arg(report.value("rssi"_L1).toInt()));
    }
    if (report.contains("channel"_L1)) {
        lines.append(tr("Channel: %1").arg(report.value("channel"_L1).toInt()));
    }
    if (report.contains("fw"_L1)) {
        lines.append(tr("Firmware: %1").arg(report.value("fw"_L1).toString()));
    }
    showStatus(lines.join(u'\n'));
}

QString ReceiverPage::newKeyText(const QString &key)
{
    return tr("New pairing key (write this down and enter it on the sending device):\n%1").arg(key);
}

void ReceiverPage::showStatus(const QString &text)
{
    if (m_status->text() != text) {
        m_status->setText(text);
    }
}

void ReceiverPage::clear()
{
    m_key->clear();
    m_refusal->tell({}, false);
}

void ReceiverPage::showSending()
{
    m_refusal->tell({}, false);
    showStatus(tr("Sending to the receiver…"));
}

void ReceiverPage::showRefusal(const QString &error)
{
    showStatus(error);
    m_refusal->tell(error, true);
}

// The receiver's next report replaces the text, so the key stays in its field as well.
void ReceiverPage::showPaired(const QString &newKey)
{
    m_refusal->tell({}, false);
    if (newKey.isEmpty()) {
        showStatus(tr("Saved. The receiver restarts to apply it."));
    } else {
        showStatus(newKeyText(newKey));
        m_key->setText(newKey);
    }
    if (newKey.isEmpty()) { // nobody needs to hear a key
        announce(m_status, m_status->text(), false);
    }
}

} // namespace tallyforge
