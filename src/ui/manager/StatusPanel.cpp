// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/StatusPanel.h"

#include "device/DeviceSession.h"
#include "ui/manager/NetworkTestText.h"
#include "ui/manager/StatusText.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/ReadOnlyBox.h"
#include "ui/widgets/ScrolledColumn.h"
#include "ui/widgets/WrappingButton.h"

#include <QTimer>
#include <QVBoxLayout>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int statusTimeoutMs = 20000;
constexpr int testTimeoutMs = 25000;
constexpr std::chrono::seconds testPause{2};
constexpr int lastTestAttempt = 12;

} // namespace

StatusPanel::StatusPanel(DeviceSession *session, QWidget *parent)
    : PanelBase(session, parent)
{
    constexpr int deviceHeight = 150; // pixels, all three
    constexpr int scoreboardHeight = 90;
    constexpr int testHeight = 120;
    QVBoxLayout *column = scrolledColumn(this);
    auto *refreshButton = new WrappingButton(tr("Refresh"), column->parentWidget());
    refreshButton->setObjectName(u"tallyforgeRefreshStatus"_s);
    column->addWidget(refreshButton);
    m_device = addBox(column, u"tallyforgeDeviceStatus"_s, tr("Device"), deviceHeight);
    m_scoreboard = addBox(column, u"tallyforgeDeviceScoreboard"_s, tr("Scoreboard right now"),
                          scoreboardHeight);
    m_test = addBox(column, u"tallyforgeNetworkTest"_s, tr("Network test"), testHeight);
    column->insertWidget(column->count() - 1,
                         hint(tr("Checks the device's local network, internet and cloud "
                                 "connection. Takes about 15 seconds."),
                              column->parentWidget()));
    m_testButton = new WrappingButton(tr("Run network test"), column->parentWidget());
    m_testButton->setObjectName(u"tallyforgeRunNetworkTest"_s);
    column->insertWidget(column->count() - 1, m_testButton);
    column->addWidget(messageLine());
    column->addStretch();
    m_scoreboard->showText(scoreboardText({}));

    connect(refreshButton, &QPushButton::clicked, this, &StatusPanel::refresh);
    connect(m_testButton, &QPushButton::clicked, this, [this] {
        m_testButton->setEnabled(false);
        m_test->showText(tr("Running…"));
        runNetworkTest(0);
    });
    connect(session, &DeviceSession::envelope, this, [this](const QJsonObject &envelope) {
        m_scoreboard->showText(scoreboardText(envelope));
    });
}

ReadOnlyBox *StatusPanel::addBox(QVBoxLayout *column, const QString &name, const QString &title,
                                 int height)
{
    auto *heading = new ThemedLabel(column->parentWidget());
    heading->setText(title);
    makeBold(heading);
    column->addWidget(heading);
    auto *box = new ReadOnlyBox(title, height, column->parentWidget());
    box->setObjectName(name);
    column->addWidget(box);
    return box;
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
void StatusPanel::runNetworkTest(int attempt)
{
    if (!session()) {
        m_testButton->setEnabled(true);
    }
    call(
        u"networkTest"_s, {},
        [this, attempt](const RpcResult &result) { onNetworkTest(result, attempt); },
        testTimeoutMs);
}

void StatusPanel::onNetworkTest(const RpcResult &result, int attempt)
{
    const bool goesOn = result.ok && !isNetworkTestDone(result.result) && attempt < lastTestAttempt;
    m_test->showText(result.ok ? networkTestText(result.result) : result.errorMessage);
    m_testButton->setEnabled(!goesOn);
    if (goesOn) {
        QTimer::singleShot(testPause, this, [this, attempt] { runNetworkTest(attempt + 1); });
    }
}

} // namespace tallyforge
