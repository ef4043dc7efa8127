// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/DevicesGroup.h"

#include "plugin/App.h"
#include "ui/account/ManageDialog.h"
#include "ui/setup/SetupDialog.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

DevicesGroup::DevicesGroup(App &app, QWidget *dialogParent, QWidget *parent)
    : Group(tr("Devices"), parent)
    , m_app(app)
    , m_dialogParent(dialogParent)
{
    setObjectName(u"tallyforgeDevices"_s);
    addButtons();

    m_relays = new ThemedLabel(this);
    m_relays->setObjectName(u"tallyforgeRelays"_s);
    m_relays->hide();
    column()->addWidget(m_relays);
    m_stopRelays =
        new WrappingButton(tr("Stop sharing this computer's internet with USB devices"), this);
    m_stopRelays->setObjectName(u"tallyforgeStopRelays"_s);
    m_stopRelays->hide();
    column()->addWidget(m_stopRelays);
    connect(m_stopRelays, &QPushButton::clicked, &m_app, &App::stopUsbRelays);
}

void DevicesGroup::addButtons()
{
    auto *setup = new WrappingButton(tr("Set up or manage a device…"), this);
    setup->setObjectName(u"tallyforgeSetUpDevice"_s);
    column()->addWidget(setup);
    connect(setup, &QPushButton::clicked, this, &DevicesGroup::openSetup);

    m_manage = new WrappingButton(tr("Manage the selected device through my account…"), this);
    m_manage->setObjectName(u"tallyforgeManageDevice"_s);
    m_manage->setEnabled(false);
    column()->addWidget(m_manage);
    connect(m_manage, &QPushButton::clicked, this, &DevicesGroup::openManage);
}

void DevicesGroup::setSignedIn(bool signedIn)
{
    m_manage->setVisible(signedIn);
}

void DevicesGroup::setDevice(const QString &id)
{
    m_device = id;
    m_manage->setEnabled(!id.isEmpty());
}

void DevicesGroup::openSetup()
{
    if (!m_setupDialog) {
        m_setupDialog = new SetupDialog(m_app, m_dialogParent);
    }
    // A turn of its own, because to make the dialog takes a while.
    QTimer::singleShot(0, m_setupDialog, [dialog = m_setupDialog.data()] {
        dialog->show();
        dialog->raise();
        dialog->activateWindow();
    });
}

void DevicesGroup::openManage()
{
    if (!m_device.isEmpty()) {
        (new ManageDialog(m_app, m_device, m_dialogParent))->show();
    }
}

void DevicesGroup::refreshRelays()
{
    const QStringList lines = m_app.usbRelaySummaries();
    if (!lines.isEmpty()) {
        m_relays->setText(tr("USB cloud relay") + u'\n' + lines.join(u'\n'));
    }
    m_relays->setVisible(!lines.isEmpty());
    m_stopRelays->setVisible(!lines.isEmpty());
}

} // namespace tallyforge
