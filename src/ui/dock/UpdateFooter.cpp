// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/UpdateFooter.h"

#include "common/BuildConfig.h"
#include "plugin/App.h"
#include "ui/dock/UpdateBanner.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

UpdateFooter::UpdateFooter(App &app, QWidget *parent)
    : Group(tr("Tallyforge plugin"), parent)
{
    setObjectName(u"tallyforgePlugin"_s);
    auto *version = new QLabel(tr("Version %1").arg(build_config::version()), this);
    version->setObjectName(u"tallyforgeVersion"_s);
    m_check = new WrappingButton(tr("Check for updates"), this);
    m_check->setObjectName(u"tallyforgeCheckForUpdates"_s);
    connect(m_check, &QPushButton::clicked, &app, [&app] { app.checkForUpdates(true); });
    auto *row = new QHBoxLayout;
    row->addWidget(version, 1);
    row->addWidget(m_check);
    column()->addLayout(row);

    m_status = hint({}, this);
    m_status->setObjectName(u"tallyforgeUpdateStatus"_s);
    column()->addWidget(m_status);

    auto *automatic = new WrappingCheckBox(tr("Check for updates automatically"), this);
    automatic->setObjectName(u"tallyforgeAutoCheckUpdates"_s);
    automatic->setChecked(app.settings().autoCheckUpdates());
    connect(automatic, &QCheckBox::toggled, &app,
            [&app](bool checked) { app.settings().setAutoCheckUpdates(checked); });
    column()->addWidget(automatic);
}

void UpdateFooter::refresh(const UpdateView &view)
{
    using State = PluginUpdater::State;
    m_check->setEnabled(!view.isOccupied());
    QString text = view.message;
    if (view.state == State::UpToDate && view.lastCheck > 0) {
        text += tr(" Checked %1.")
                    .arg(QDateTime::fromSecsSinceEpoch(view.lastCheck).toString(Qt::TextDate));
    }
    m_status->showText(text);
    m_status->setError(view.state == State::Failed);
}

} // namespace tallyforge
