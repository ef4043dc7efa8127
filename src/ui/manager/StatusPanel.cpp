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

void addHeading(QVBoxLayout *column, const QString &title)
{
    auto *heading = new ThemedLabel(column->parentWidget());
    heading->setText(title);
    makeBold(heading);
    column->addWidget(heading);
}

ReadOnlyBox *addBox(QVBoxLayout *column, const QString &name, const QString &title, int height)
{
    auto *box = new ReadOnlyBox(title, height, column->parentWidget());
    box->setObjectName(name);
    column->addWidget(box);
    return box;
}

QPushButton *addButton(QVBoxLayout *column, const QString &name, const QString &text)
{
    auto *button = new WrappingButton(text, column->parentWidget());
    button->setObjectName(name);
    column->addWidget(button);
    return button;
}

} // namespace

StatusPanel::StatusPanel(DeviceSession *session, QWidget *parent)
    : PanelBase(session, parent)
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
    m_device = addBox(column, u"tallyforgeDeviceStatus"_s, device, deviceHeight);
    addHeading(column, scoreboard);
    m_scoreboard = addBox(column, u"tallyforgeDeviceScoreboard"_s, scoreboard, scoreboardHeight);
    addHeading(column, test);
    column->addWidget(hint(tr("Checks the device's local network, internet and cloud connection. "
                              "Takes about 15 seconds."),
                           column->parentWidget()));
    m_testButton = addButton(column, u"tallyforgeRunNetworkTest"_s, tr("Run network test"));
    m_test = addBox(column, u"tallyforgeNetworkTest"_s, test, testHeight);
    column->addWidget(messageLine());
    column->addStretch();
    m_scoreboard->showText(scoreboardText({}));

    connect(refreshButton, &QPushButton::clicked, this, &StatusPanel::refresh);
    connect(m_testButton, &QPushButton::clicked, this, [this] {
        m_testButton->setEnabled(false);
        m_test->showText(tr("Running…"));
        runNetworkTest(0);
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
