// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/WirelessInputGroup.h"

#include <QCheckBox>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr auto autoScanKey = "wireless_auto_scan"_L1;
constexpr auto channelKey = "wireless_channel"_L1;

bool hasXbee(const QString &maker)
{
    return maker.compare("oes"_L1, Qt::CaseInsensitive) == 0 ||
           maker.compare("varsity"_L1, Qt::CaseInsensitive) == 0;
}

} // namespace

WirelessInputGroup::WirelessInputGroup(QWidget *parent)
    : Group(tr("Wireless input"), parent)
    , m_rm024(new SettingsForm(this))
    , m_xbee(new SettingsForm(this))
{
    setObjectName(u"tallyforgeWirelessInput"_s);
    addRm024Form();
    addXbeeForm();
    column()->addWidget(m_rm024);
    column()->addWidget(m_xbee);
    hide();
}

void WirelessInputGroup::addRm024Form()
{
    m_rm024->setObjectName(u"tallyforgeRm024"_s);
    const QCheckBox *autoScan =
        m_rm024->addCheck(autoScanKey, tr("Find the channel automatically"), true);
    m_rm024->addNumber("wireless_group"_L1, tr("Group"), {0, 255}, 0);
    QSpinBox *channel = m_rm024->addNumber(channelKey, tr("Channel (0-79)"), {0, 79}, 0);
    channel->setDisabled(autoScan->isChecked());
    connect(autoScan, &QCheckBox::toggled, channel, &QWidget::setDisabled);
}

void WirelessInputGroup::addXbeeForm()
{
    constexpr int sameChannel = 255;
    constexpr int samePanId = 65535;
    constexpr int panIdDigits = 4;
    m_xbee->setObjectName(u"tallyforgeXbee"_s);
    m_xbee->addHex("xbee_channel"_L1, tr("Channel"), tr("hex 0B-1A, blank = unchanged"),
                   sameChannel, 1);
    m_xbee->addHex("xbee_pan_id"_L1, tr("PAN ID"), tr("hex 16-bit, blank = unchanged"), samePanId,
                   panIdDigits);
}

void WirelessInputGroup::load(const QString &maker, const QString &connection,
                              const QJsonObject &settings, SettingsForm::Edits edits)
{
    const bool isWireless = connection == "wireless"_L1;
    if (isWireless) {
        const bool isXbee = hasXbee(maker);
        m_used = isXbee ? m_xbee : m_rm024;
        m_used->load(settings, edits);
        m_rm024->setVisible(!isXbee);
        m_xbee->setVisible(isXbee);
        setTitle(isXbee ? tr("Wireless input (Xbee)") : tr("Wireless input (RM024)"));
    } else {
        m_used = nullptr;
    }
    setVisible(isWireless);
}

QJsonObject WirelessInputGroup::values() const
{
    if (!m_used) {
        return {};
    }
    QJsonObject values = m_used->values();
    if (values.value(autoScanKey).toBool()) {
        values.insert(channelKey, 0); // the device refuses a channel beside the search
    }
    return values;
}

void WirelessInputGroup::markSent()
{
    m_sent = m_used;
    if (m_sent) {
        m_sent->markSent();
    }
}

void WirelessInputGroup::markSaved()
{
    if (m_sent) {
        m_sent->markSaved();
    }
}

} // namespace tallyforge
