// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/StatusPanel.h"

#include "device/DeviceSession.h"
#include "ui/manager/NetworkTestText.h"
#include "ui/manager/StatusText.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/PageBuilders.h"
#include "ui/widgets/ReadOnlyBox.h"
#include "ui/widgets/ScrolledColumn.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int statusTimeoutMs = 20000;
constexpr int testTimeoutMs = 25000;
constexpr AnswerPoll::Rule testRule{.pause = std::chrono::seconds(2), .questions = 13};

} // namespace

StatusPanel::StatusPanel(DeviceSession *session, QWidget *parent)
    : PanelBase(session, parent)
    , m_networkTest(new AnswerPoll(testRule, networkTestCalls(), this))
{
    constexpr int deviceHeight = 150; // pixels, all three
    constexpr int scoreboardHeight = 90;
    constexpr int testHeight = 120;
    const QString device = tr("Device");
    const QString scoreboard = tr("Scoreboard right now");
    const QString test = tr("Network test");
    QVBoxLayout *column = scrolledColumn(this);
    const QPushButton *refreshButton =
        addButton(column, u"tallyforgeRefreshStatus"_s, tr("Refresh"));
    addHeading(column, device);
    m_device = addReadOnlyBox(column, u"tallyforgeDeviceStatus"_s, device, deviceHeight);
    addHeading(column, scoreboard);
    m_scoreboard =
        addReadOnlyBox(column, u"tallyforgeDeviceScoreboard"_s, scoreboard, scoreboardHeight);
    addHeading(column, test);
    column->addWidget(hint(tr("Checks the device's local network, internet and cloud connection. "
                              "Takes about 15 seconds."),
                           column->parentWidget()));
    m_testButton = addButton(column, u"tallyforgeRunNetworkTest"_s, tr("Run network test"));
    m_test = addReadOnlyBox(column, u"tallyforgeNetworkTest"_s, test, testHeight);
    column->addWidget(messageLine());
    column->addStretch();
    m_scoreboard->showText(scoreboardText({}));

    connect(refreshButton, &QPushButton::clicked, this, &StatusPanel::refresh);
    connect(m_testButton, &QPushButton::clicked, this, [this] {
        m_testButton->setEnabled(false);
        m_test->showText(tr("Running…"));
        m_networkTest->start();
    });
    if (session != nullptr) {
        connect(session, &DeviceSession::envelope, this, [this](const QJsonObject &envelope) {
            m_scoreboard->showText(scoreboardText(envelope));
        });
    }
}

void StatusPanel::refresh()
{
    setMessage({}, false);
    call(
        u"getStatus"_s, {},
        [this](const RpcResult &result) {
            if (result.ok) {
                m_device->showText(statusText(result.result));
            } else {
                setMessage(result.errorMessage, true);
            }
        },
        statusTimeoutMs);
}

// The same method starts the test and tells how far it has got.
AnswerPoll::Calls StatusPanel::networkTestCalls()
{
    return {.ask =
                [this](const RpcClient::Callback &callback) {
                    return call(u"networkTest"_s, {}, callback, testTimeoutMs);
                },
            .take =
                [this](const QJsonObject &answer) {
                    m_test->showText(networkTestText(answer));
                    return !isNetworkTestDone(answer);
                },
            .end =
                [this](bool contact, const QString &error) {
                    m_testButton->setEnabled(true);
                    if (!contact) {
                        m_test->showText(error);
                    }
                }};
}

} // namespace tallyforge
