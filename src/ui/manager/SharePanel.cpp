// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/SharePanel.h"

#include "core/SettingsStore.h"
#include "device/usb/UsbLink.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr qint64 kilobyte = 1024;
constexpr qint64 megabyte = kilobyte * 1024;

QString cloudText(const CloudRelayStatus &cloud, bool receiverMode)
{
    if (!cloud.enabled) {
        return SharePanel::tr(
            "Sharing is off, so the device cannot reach the cloud over this cable.");
    }
    if (!cloud.configured) {
        return receiverMode
                   ? SharePanel::tr("Waiting for the paired device to ask for the cloud. This "
                                    "starts once the device is linked to the receiver and has its "
                                    "cloud sign-in.")
                   : SharePanel::tr("The device is not asking for a cloud connection over USB. "
                                    "Turn on \"Cloud over USB\" in this device's Settings tab (the "
                                    "device also needs its cloud sign-in).");
    }
    if (cloud.connected) {
        return SharePanel::tr(
                   "Connected to the cloud through this computer.  Sent %1, received %2.")
            .arg(byteCount(cloud.bytesToCloud), byteCount(cloud.bytesFromCloud));
    }
    if (!cloud.lastError.isEmpty()) {
        return SharePanel::tr("This computer could not reach the cloud (%1). Check its internet "
                              "connection.")
            .arg(cloud.lastError);
    }
    return SharePanel::tr("Ready. This computer connects to %1 as soon as the device asks.")
        .arg(cloud.host);
}

QString updateText(const StreamRelayStatus &streams)
{
    if (!streams.destinations.contains("ota"_L1)) {
        return SharePanel::tr("Only the live-score cloud link travels over the cable. This device "
                              "downloads firmware itself, so it needs Wi-Fi or Ethernet for "
                              "updates (or update its firmware over Wi-Fi once).");
    }
    const QString progress = streams.activeStreams < 1
                                 ? QString()
                                 : SharePanel::tr(" (downloading now: %1 received)")
                                       .arg(byteCount(streams.bytesToDevice));
    return SharePanel::tr("Firmware updates for a device with no Wi-Fi or Ethernet also download "
                          "through this computer%1.")
        .arg(progress);
}

} // namespace

SharePanel::SharePanel(SettingsStore &settings, QWidget *parent)
    : Group(tr("Share this computer's internet connection"), parent)
    , m_settings(settings)
    , m_share(new WrappingCheckBox(
          tr("Let the device reach the Tallyforge cloud through this computer"), this))
    , m_status(new ThemedLabel(this))
{
    setObjectName(u"tallyforgeShare"_s);
    m_share->setObjectName(u"tallyforgeShareConnection"_s);
    m_status->setObjectName(u"tallyforgeShareStatus"_s);
    column()->addWidget(m_share);
    column()->addWidget(m_status);
    hide();
    connect(m_share, &QCheckBox::toggled, this, &SharePanel::onToggled);
    connect(&m_timer, &QTimer::timeout, this, &SharePanel::update);
    m_timer.start(std::chrono::seconds(1));
}

void SharePanel::setLink(UsbLink *link, bool receiverMode)
{
    m_link = link;
    m_receiverMode = receiverMode;
    if (!link) {
        hide();
        return;
    }
    if (parentWidget()) {
        show();
    }
    link->cloud()->setEnabled(m_settings.shareConnection());
    connect(link, &UsbLink::tunnelChanged, this, &SharePanel::update, Qt::UniqueConnection);
    connect(link, &QObject::destroyed, this, &SharePanel::update, Qt::UniqueConnection);
    update();
}

void SharePanel::onToggled(bool checked)
{
    m_settings.setShareConnection(checked);
    if (m_link) {
        m_link->cloud()->setEnabled(checked);
    }
    update();
}

void SharePanel::update()
{
    if (!m_link) {
        hide();
        return;
    }
    const CloudRelayStatus cloud = m_link->cloud()->status();
    {
        const QSignalBlocker quiet(m_share);
        m_share->setChecked(cloud.enabled);
    }
    const QString text =
        cloudText(cloud, m_receiverMode) + u'\n' + updateText(m_link->streams()->status());
    if (m_status->text() != text) {
        m_status->setText(text);
    }
}

QString byteCount(qint64 bytes)
{
    if (bytes < kilobyte) {
        return SharePanel::tr("%1 B").arg(bytes);
    }
    const bool isSmall = bytes < megabyte;
    const double amount = double(bytes) / double(isSmall ? kilobyte : megabyte);
    return (isSmall ? SharePanel::tr("%1 KB") : SharePanel::tr("%1 MB")).arg(amount, 0, 'f', 1);
}

} // namespace tallyforge
