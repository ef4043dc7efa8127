// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/ScoreboardGroup.h"

#include "plugin/App.h"
#include "ui/dock/ScoreLine.h"
#include "ui/dock/ScoreView.h"
#include "ui/widgets/ElidingComboBox.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTextDocument>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

const QString &lanRoute()
{
    static const QString route = u"lan"_s;
    return route;
}

} // namespace

ScoreboardGroup::ScoreboardGroup(App &app, QWidget *parent)
    : Group(tr("Scoreboard"), parent)
    , m_app(app)
{
    setObjectName(u"tallyforgeScoreboard"_s);
    m_devices = new ElidingComboBox(this);
    m_devices->setObjectName(u"tallyforgeDevice"_s);
    m_devices->setAccessibleName(tr("Scoreboard"));
    connect(m_devices, &QComboBox::activated, this, &ScoreboardGroup::onActivated);

    m_lan = new WrappingCheckBox(tr("Use my local network (works without internet)"), this);
    m_lan->setObjectName(u"tallyforgeUseLan"_s);
    m_lan->hide();
    connect(m_lan, &QCheckBox::toggled, this, &ScoreboardGroup::onLanToggled);

    m_status = new ThemedLabel(this);
    m_status->setObjectName(u"tallyforgeStatus"_s);
    m_status->setTextFormat(Qt::RichText);
    m_score = new ScoreView(this);

    const auto all = {static_cast<QWidget *>(m_devices), static_cast<QWidget *>(m_lan),
                      static_cast<QWidget *>(m_status), static_cast<QWidget *>(m_score)};
    for (QWidget *widget : all) {
        column()->addWidget(widget);
    }
}

QString ScoreboardGroup::device() const
{
    return m_devices->currentData().toString();
}

void ScoreboardGroup::setSignedIn(bool signedIn)
{
    m_devices->setVisible(signedIn);
}

void ScoreboardGroup::refreshDevices()
{
    const QSignalBlocker blocker(m_devices);
    listDevices();
    showFollowedDevice();
    m_devices->setToolTip(Qt::convertFromPlainText(m_devices->currentText()));
    refreshLan();
    Q_EMIT deviceChanged(device());
}

// A list that is the same already stays, because it may be open.
void ScoreboardGroup::listDevices()
{
    QList<std::pair<QString, QString>> wanted; // text and id
    for (const PortalDevice &device : m_app.devices()) {
        wanted.emplaceBack(device.displayName(), device.deviceId);
    }
    if (wanted.isEmpty()) {
        wanted.emplaceBack(tr("No devices on this account yet"), QString());
    }
    QList<std::pair<QString, QString>> shown;
    for (int i = 0; i < m_devices->count(); ++i) {
        shown.emplaceBack(m_devices->itemText(i), m_devices->itemData(i).toString());
    }
    if (shown == wanted) {
        return;
    }
    m_devices->clear();
    for (const auto &[text, id] : std::as_const(wanted)) {
        m_devices->addItem(text, id);
        m_devices->setItemData(m_devices->count() - 1, Qt::convertFromPlainText(text),
                               Qt::ToolTipRole);
    }
}

void ScoreboardGroup::showFollowedDevice()
{
    const QString followed = m_app.sources()->deviceId();
    const QString wanted = followed.isEmpty() ? m_app.settings().selectedDevice() : followed;
    const int index =
        m_devices->findData(wanted, Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_devices->setCurrentIndex(qMax(index, 0));
}

void ScoreboardGroup::onActivated()
{
    m_devices->setToolTip(Qt::convertFromPlainText(m_devices->currentText()));
    const QString id = device();
    if (!id.isEmpty()) {
        m_app.selectCloudDevice(id);
        refreshLan();
        Q_EMIT deviceChanged(id);
    }
}

void ScoreboardGroup::refreshLan()
{
    const QScopedValueRollback guard(m_refreshingLan, true);
    const QString id = device();
    const LanDevice lan = m_app.settings().lanDevice(id);
    const bool possible = !id.isEmpty() && !lan.host.isEmpty() && !lan.token.isEmpty();
    m_lan->setVisible(possible);
    m_lan->setChecked(possible && m_app.settings().preferredRoute(id) == lanRoute());
}

void ScoreboardGroup::onLanToggled(bool checked)
{
    const QString id = device();
    if (m_refreshingLan || id.isEmpty()) {
        return;
    }
    m_app.settings().setPreferredRoute(id, checked ? lanRoute() : u"cloud"_s);
    m_app.selectCloudDevice(id);
}

void ScoreboardGroup::refreshStatus()
{
    const SourceManager &sources = *m_app.sources();
    const QString text =
        sources.statusText().isEmpty() ? tr("Pick a scoreboard above.") : sources.statusText();
    m_status->setText(u"<span style=\"color:%1\">●</span> %2"_s.arg(
        sources.isLive() ? u"#3cb371"_s : u"#d9a441"_s, text.toHtmlEscaped()));
}

void ScoreboardGroup::refreshScore()
{
    m_score->showText(scoreLine(m_app.live()));
}

} // namespace tallyforge
