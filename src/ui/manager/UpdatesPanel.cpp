// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/UpdatesPanel.h"

#include "ui/manager/UpdateGroup.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/ScrolledColumn.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tallyforge {

namespace {

constexpr int answerMs = 20000;
constexpr int checkMs = 30000; // the device asks the cloud
constexpr int progressMs = 8000;
// Five failures, a second apart, are taken as a restart.
constexpr AnswerPoll::Rule progressRule{.pause = 700ms, .failures = 5, .failurePause = 1000ms};

QString failureText(const QJsonObject &progress)
{
    return UpdatesPanel::tr("Update failed: %1")
        .arg(progress.value("error"_L1).toString(UpdatesPanel::tr("unknown error")));
}

} // namespace

UpdatesPanel::UpdatesPanel(DeviceSession *session, QWidget *parent)
    : PanelBase(session, parent)
{
    setObjectName(u"tallyforgeUpdates"_s);
    QVBoxLayout *column = scrolledColumn(this);
    addFirmware(column);
    addChip(column);
    column->addWidget(messageLine());
    column->addStretch();
}

void UpdatesPanel::addFirmware(QBoxLayout *column)
{
    m_firmware =
        new UpdateGroup(u"tallyforgeFirmware"_s, tr("Device firmware"), column->parentWidget());
    column->addWidget(m_firmware);
    m_check = m_firmware->addButton(u"tallyforgeCheckUpdate"_s, tr("Check for update"));
    m_install =
        m_firmware->addButton(u"tallyforgeInstallUpdate"_s, tr("Install update and restart"));
    m_install->setEnabled(false);
    connect(m_check, &QPushButton::clicked, this, &UpdatesPanel::check);
    connect(m_install, &QPushButton::clicked, this, &UpdatesPanel::install);
    m_pollFirmware = new AnswerPoll(
        progressRule,
        {.ask =
             [this](const RpcClient::Callback &callback) {
                 return call(u"otaProgress"_s, {}, callback, progressMs);
             },
         .take = [this](const QJsonObject &progress) { return takeFirmware(progress); },
         .end =
             [this](bool contact, const QString &) {
                 m_check->setEnabled(true);
                 if (!contact) {
                     m_firmware->showStatus(
                         tr("Lost contact with the device while it updates (it is probably "
                            "restarting). Reconnect in a minute."));
                 }
             }},
        this);
}

void UpdatesPanel::addChip(QBoxLayout *column)
{
    m_chip = new UpdateGroup(u"tallyforgeChip"_s, tr("Wireless chip (ESP32-C6)"),
                             column->parentWidget());
    m_chip->hide();
    column->addWidget(m_chip);
    m_updateChip =
        m_chip->addButton(u"tallyforgeUpdateChip"_s, tr("Update wireless chip and restart"));
    connect(m_updateChip, &QPushButton::clicked, this, &UpdatesPanel::updateChip);
    m_pollChip = new AnswerPoll(
        progressRule,
        {.ask =
             [this](const RpcClient::Callback &callback) {
                 return call(u"c6OtaStatus"_s, {}, callback, progressMs);
             },
         .take = [this](const QJsonObject &progress) { return takeChip(progress); },
         .end =
             [this](bool contact, const QString &) {
                 m_updateChip->setEnabled(true);
                 if (!contact) {
                     m_chip->showStatus(tr("Lost contact with the device (it may be restarting)."));
                 }
             }},
        this);
}

void UpdatesPanel::refresh()
{
    call(
        u"getStatus"_s, {},
        [this](const RpcResult &result) {
            if (result.ok) {
                m_firmware->showVersion(result.result.value("firmware_version"_L1).toString());
            }
        },
        answerMs);
    call(
        u"c6OtaStatus"_s, {},
        [this](const RpcResult &result) {
            if (result.ok) {
                const QString older =
                    result.result.value("running_version"_L1).toString(tr("unknown"));
                m_chip->showVersion(result.result.value("c6_running_version"_L1).toString(older));
            }
            // Not every device has one; one that is being updated may not answer.
            m_chip->setVisible(result.ok || !m_updateChip->isEnabled());
        },
        answerMs);
}

void UpdatesPanel::check()
{
    tell(tr("Checking…"), false);
    m_checked.next();
    call(u"otaCheck"_s, {}, m_checked.guard([this](const RpcResult &result) {
        if (result.ok) {
            onCheck(result.result);
        } else {
            tell(result.errorMessage, true);
        }
    }),
         checkMs);
}

// An answer can offer an update and tell of an error at once.
void UpdatesPanel::onCheck(const QJsonObject &answer)
{
    const bool isOffered = answer.value("update_available"_L1).toBool();
    const QString error = answer.value("error"_L1).toString();
    m_firmware->showVersion(answer.value("current_version"_L1).toString());
    m_offered = isOffered ? answer.value("version"_L1).toString() : QString();
    m_install->setEnabled(isOffered);
    if (!error.isEmpty()) {
        tell(tr("Error: %1").arg(error), true);
    } else {
        tell(isOffered ? tr("Version %1 is available.").arg(m_offered) : tr("Up to date."), false);
    }
}

void UpdatesPanel::install()
{
    const QString what =
        m_offered.isEmpty() ? tr("the latest firmware") : tr("version %1").arg(m_offered);
    confirm(tr("Install update"), tr("Install %1 and restart the device now?").arg(what), [this] {
        m_checked.next(); // a late answer must not offer the installation once more
        m_check->setEnabled(false);
        m_install->setEnabled(false);
        tell(tr("Starting the update…"), false);
        const bool isAsked = call(
            u"otaApply"_s, {},
            [this](const RpcResult &result) {
                if (result.ok) {
                    m_firmware->begin();
                    m_pollFirmware->start();
                } else {
                    tell(result.errorMessage, true);
                    m_check->setEnabled(true);
                }
            },
            answerMs);
        if (!isAsked) { // else the panel may have gone
            m_check->setEnabled(true);
        }
    });
}

bool UpdatesPanel::takeFirmware(const QJsonObject &progress)
{
    const QString state = progress.value("state"_L1).toString();
    if (state == "downloading"_L1) {
        const int percent = m_firmware->showProgress(progress.value("bytes_read"_L1).toDouble(),
                                                     progress.value("total_bytes"_L1).toDouble());
        m_firmware->showStatus(tr("Downloading… %1%").arg(percent));
    } else if (state == "applying"_L1) {
        m_firmware->showProgress(1, 1);
        m_firmware->showStatus(tr("Verifying and applying the update…"));
    } else if (state == "rebooting"_L1) {
        m_firmware->showProgress(1, 1);
        m_firmware->showStatus(
            tr("Update applied. The device is restarting – reconnect in a minute."));
        return false;
    } else if (state == "failed"_L1) {
        m_firmware->showStatus(failureText(progress));
        return false;
    }
    return true;
}

void UpdatesPanel::updateChip()
{
    confirm(tr("Update wireless chip"),
            tr("Update the wireless chip from the staged image and restart the device?"), [this] {
                m_updateChip->setEnabled(false);
                const bool isAsked = call(
                    u"c6OtaApply"_s, {{u"source"_s, u"partition"_s}, {u"force"_s, false}},
                    [this](const RpcResult &result) {
                        if (result.ok) {
                            m_chip->begin();
                            m_pollChip->start();
                        } else {
                            m_chip->showStatus(result.errorMessage);
                            m_updateChip->setEnabled(true);
                        }
                    },
                    answerMs);
                if (!isAsked) {
                    m_updateChip->setEnabled(true);
                }
            });
}

bool UpdatesPanel::takeChip(const QJsonObject &progress)
{
    const QString state = progress.value("state"_L1).toString();
    if (state == "rebooting"_L1 || state == "done"_L1 || state == "idle"_L1) {
        m_chip->showStatus(tr("Finished. The device may restart."));
        return false;
    }
    if (state == "failed"_L1) {
        m_chip->showStatus(failureText(progress));
        return false;
    }
    m_chip->showProgress(progress.value("bytes_sent"_L1).toDouble(),
                         progress.value("total_bytes"_L1).toDouble());
    m_chip->showStatus(tr("Working… (%1)").arg(state));
    return true;
}

} // namespace tallyforge
