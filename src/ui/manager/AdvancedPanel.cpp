// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/AdvancedPanel.h"

#include "ui/widgets/LogBox.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/PageBuilders.h"
#include "ui/widgets/ScrolledColumn.h"

#include <QJsonDocument>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int answerMs = 20000;
constexpr int logMs = 30000;

} // namespace

AdvancedPanel::AdvancedPanel(DeviceSession *session, QWidget *parent)
    : PanelBase(session, parent)
{
    constexpr int logHeight = 160; // pixels, both
    constexpr int gap = 12;
    setObjectName(u"tallyforgeAdvanced"_s);
    QVBoxLayout *column = scrolledColumn(this);
    const QPushButton *restartButton =
        addButton(column, u"tallyforgeRestartDevice"_s, tr("Restart device"));
    const QPushButton *logButton = addButton(column, u"tallyforgeShowLog"_s, tr("Show device log"));
    m_log = new LogBox(tr("Device log"), logHeight, column->parentWidget());
    m_log->setObjectName(u"tallyforgeLog"_s);
    column->addWidget(m_log);
    column->addSpacing(gap);
    addDanger(column);
    column->addWidget(messageLine());
    column->addStretch();
    connect(restartButton, &QPushButton::clicked, this, &AdvancedPanel::askToRestart);
    connect(logButton, &QPushButton::clicked, this, &AdvancedPanel::readLog);
}

void AdvancedPanel::addDanger(QBoxLayout *column)
{
    addHeading(column, tr("Danger zone"));
    const QPushButton *password = addButton(column, u"tallyforgeResetPassword"_s,
                                            tr("Reset admin password to the factory password…"));
    const QPushButton *reset = addButton(column, u"tallyforgeFactoryReset"_s, tr("Factory reset…"));
    connect(password, &QPushButton::clicked, this, &AdvancedPanel::askToResetPassword);
    connect(reset, &QPushButton::clicked, this, &AdvancedPanel::askToReset);
}

void AdvancedPanel::askToRestart()
{
    confirm(tr("Restart device"),
            tr("Restart the device now? Live scores pause for about a minute."),
            [this] { restart(); });
}

void AdvancedPanel::restart()
{
    if (!checkSession()) {
        return;
    }
    session()->reboot([self = QPointer(this)](bool ok, const QString &error) {
        if (self) {
            self->tell(ok ? tr("Restarting…") : error, !ok);
        }
    });
}

void AdvancedPanel::readLog()
{
    tell(tr("Reading the log…"), false);
    call(
        u"getLogs"_s, {},
        [this](const RpcResult &result) {
            if (!result.ok) {
                tell(result.errorMessage, true);
                return;
            }
            const QString logs = result.result.value("logs"_L1).toString();
            m_log->showLog(logs.isEmpty() ? QString::fromUtf8(QJsonDocument(result.result).toJson())
                                          : logs);
            tell({}, false);
        },
        logMs);
}

void AdvancedPanel::askToResetPassword()
{
    confirm(
        tr("Reset admin password"),
        tr("Set the admin password back to the factory password? You will be asked to choose a new "
           "one next time."),
        [this] { callConfirmed(u"resetLocalPassword"_s, tr("Password reset.")); },
        Severity::Severe);
}

void AdvancedPanel::askToReset()
{
    askForText(this, titleWithDevice(tr("Factory reset")),
               tr("This erases every setting on the device, including Wi-Fi and its cloud "
                  "sign-in.\n\nType RESET to continue."),
               [this](const QString &text) {
                   if (text.trimmed() == "RESET"_L1) {
                       callConfirmed(u"factoryReset"_s, tr("The device is resetting."));
                   }
               });
}

void AdvancedPanel::callConfirmed(const QString &method, const QString &done)
{
    call(
        method, {{u"confirm"_s, true}},
        [this, done](const RpcResult &result) {
            tell(result.ok ? done : result.errorMessage, !result.ok);
        },
        answerMs);
}

} // namespace tallyforge
