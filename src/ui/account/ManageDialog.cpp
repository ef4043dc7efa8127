// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/account/ManageDialog.h"

#include "plugin/App.h"
#include "ui/account/ScoreboardForm.h"
#include "ui/widgets/LogBox.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/PageBuilders.h"
#include "ui/widgets/PageStyle.h"
#include "ui/widgets/Question.h"
#include "ui/widgets/ScrolledColumn.h"

#include <QJsonDocument>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr QSize usualSize{440, 520}; // logical pixels
constexpr QSize windowFrame{20, 60}; // what a window manager may add
constexpr int outputHeight = 110;    // pixels
constexpr int outputBlocks = 200;

// The plain values of a status, a line each.
QString statusText(const QJsonObject &status)
{
    QStringList lines;
    for (auto value = status.begin(); value != status.end(); ++value) {
        if (!value->isObject() && !value->isArray()) {
            lines.append(
                ManageDialog::tr("%1: %2").arg(value.key(), value->toVariant().toString()));
        }
    }
    return lines.isEmpty() ? ManageDialog::tr("The device answered.") : lines.join(u'\n');
}

QJsonObject dataOf(const PortalResult &result)
{
    return result.data.value("data"_L1).toObject();
}

} // namespace

ManageDialog::ManageDialog(App &app, const QString &deviceId, QWidget *parent)
    : QDialog(parent)
    , m_app(&app)
    , m_deviceId(deviceId)
{
    setObjectName(u"tallyforgeManageDialog"_s);
    setWindowTitle(tr("Manage %1").arg(deviceId));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(usualSize.boundedTo(screen()->availableSize() - windowFrame));
    new PageStyle(this);
    QVBoxLayout *column = scrolledColumn(this);
    auto *title = new ThemedLabel(column->parentWidget(), ThemedLabel::Tone::Normal,
                                  ThemedLabel::Size::Title);
    title->setObjectName(u"tallyforgeManagedDevice"_s);
    title->setText(deviceId);
    makeBold(title);
    column->addWidget(title);
    m_message = new MessageLine(column->parentWidget());
    m_message->setObjectName(u"tallyforgeManageMessage"_s);
    column->addWidget(m_message);
    addStatus(column);
    addScoreboard(column);
    addTools(column);
    setMessage(tr("These actions reach the device through your Tallyforge account, so it must be "
                  "online."),
               false);
    m_actions.first()->setFocus();
}

void ManageDialog::addStatus(QBoxLayout *column)
{
    addCommand(column, u"tallyforgeCheckStatus"_s, tr("Check device status"),
               &ManageDialog::checkStatus)
        ->setDefault(true);
    m_output = new LogBox(tr("The device's answer"), outputHeight, column->parentWidget());
    m_output->setObjectName(u"tallyforgeManageOutput"_s);
    m_output->setMaximumBlockCount(outputBlocks);
    column->addWidget(m_output, 1);
}

void ManageDialog::addScoreboard(QBoxLayout *column)
{
    addHeading(column, tr("Scoreboard"));
    m_scoreboard = new ScoreboardForm(column->parentWidget());
    column->addWidget(m_scoreboard);
    addCommand(column, u"tallyforgeChangeScoreboard"_s, tr("Change scoreboard"),
               &ManageDialog::changeScoreboard);
}

void ManageDialog::addTools(QBoxLayout *column)
{
    auto *row = new QHBoxLayout;
    column->addLayout(row);
    addCommand(row, u"tallyforgeCheckFirmware"_s, tr("Check for update"),
               &ManageDialog::checkUpdate);
    addCommand(row, u"tallyforgeRestartManaged"_s, tr("Restart device"),
               &ManageDialog::askToRestart);
}

QPushButton *ManageDialog::addCommand(QBoxLayout *to, const QString &name, const QString &text,
                                      void (ManageDialog::*action)())
{
    QPushButton *button = addButton(to, name, text);
    connect(button, &QPushButton::clicked, this, action);
    m_actions.append(button);
    return button;
}

void ManageDialog::setMessage(const QString &text, bool isError)
{
    m_message->tell(text, isError);
}

void ManageDialog::setBusy(bool busy)
{
    for (QPushButton *button : std::as_const(m_actions)) {
        button->setEnabled(!busy);
    }
}

ManageDialog::Answer ManageDialog::begin(const QString &busyText, const Answer &onSuccess)
{
    setMessage(busyText, false);
    setBusy(true);
    return [self = QPointer(this), onSuccess](const PortalResult &result) {
        if (!self) {
            return;
        }
        self->setBusy(false);
        if (result.ok) {
            onSuccess(result);
        } else {
            self->setMessage(result.message, true);
        }
    };
}

void ManageDialog::run(const QString &command, const QString &busyText, const Answer &onSuccess)
{
    if (m_app) {
        m_app->portal().sendCommand(m_deviceId, command, {}, begin(busyText, onSuccess));
    }
}

void ManageDialog::checkStatus()
{
    run(u"get_status"_s, tr("Asking the device…"), [this](const PortalResult &result) {
        m_output->showLog(statusText(dataOf(result)));
        setMessage(tr("Status received."), false);
    });
}

void ManageDialog::changeScoreboard()
{
    if (m_app) {
        m_app->portal().setConfig(m_deviceId, m_scoreboard->config(),
                                  begin(tr("Sending to the device…"), [this](const PortalResult &) {
                                      setMessage(tr("The device accepted the new scoreboard."),
                                                 false);
                                  }));
    }
}

void ManageDialog::checkUpdate()
{
    run(u"ota_check"_s, tr("Checking for a firmware update…"), [this](const PortalResult &result) {
        m_output->showLog(QString::fromUtf8(QJsonDocument(dataOf(result)).toJson()));
        setMessage(tr("Update check finished."), false);
    });
}

void ManageDialog::askToRestart()
{
    askToConfirm(this, tr("Restart device"),
                 tr("Restart %1 now? Live scores pause for about a minute.").arg(m_deviceId),
                 [this] { restart(); });
}

void ManageDialog::restart()
{
    run(u"reboot"_s, tr("Restarting…"), [this](const PortalResult &result) {
        setMessage(result.data.value("queued"_L1).toBool()
                       ? tr("The device is offline; it will restart when it reconnects.")
                       : tr("Restart sent."),
                   false);
    });
}

} // namespace tallyforge
