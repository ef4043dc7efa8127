// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/UpdateBanner.h"

#include "common/BuildConfig.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

using State = PluginUpdater::State;

namespace {

constexpr int progressHeight = 8; // pixels

bool isOnOffer(const UpdateView &view)
{
    switch (view.state) {
    case State::Available:
    case State::Downloading:
    case State::Installing:
    case State::Installed:
        return true;
    case State::Failed:
        return !view.packageUrl.isEmpty(); // else only a check has failed
    default:
        return false;
    }
}

QString titleOf(const UpdateView &view)
{
    switch (view.state) {
    case State::Installed: {
        const QString wait = UpdateBanner::tr(
            " OBS is streaming or recording right now, so wait until you are done.");
        return UpdateBanner::tr("Restart OBS to finish updating to version %1.").arg(view.version) +
               (view.outputActive ? wait : QString());
    }
    case State::Failed:
        return UpdateBanner::tr("The update to version %1 did not finish.").arg(view.version);
    case State::Available:
        return UpdateBanner::tr("Tallyforge %1 is available (you have %2).")
            .arg(view.version, build_config::version());
    default:
        return view.message;
    }
}

QString bannerStyle(State state)
{
    return state == State::Installed
               ? u"QFrame#tallyforgeUpdateBanner { border: 3px solid #e8a317; border-radius: 8px; "
                 "background: rgba(232, 163, 23, 0.18); }"_s
               : u"QFrame#tallyforgeUpdateBanner { border: 2px solid #3d8bdb; border-radius: 8px; "
                 "background: rgba(61, 139, 219, 0.14); }"_s;
}

} // namespace

bool UpdateView::isBusy() const
{
    return state == State::Checking || state == State::Downloading || state == State::Installing;
}

UpdateBanner::UpdateBanner(QWidget *parent)
    : QFrame(parent)
    , m_title(new ThemedLabel(this))
    , m_notes(hint({}, this))
    , m_progress(new QProgressBar(this))
    , m_install(new WrappingButton(tr("Update now"), this))
    , m_download(new WrappingButton(tr("Open the download page"), this))
{
    setObjectName(u"tallyforgeUpdateBanner"_s);
    m_title->setObjectName(u"tallyforgeUpdateTitle"_s);
    m_notes->setObjectName(u"tallyforgeUpdateNotes"_s);
    m_progress->setObjectName(u"tallyforgeUpdateProgress"_s);
    m_install->setObjectName(u"tallyforgeUpdateNow"_s);
    m_download->setObjectName(u"tallyforgeOpenDownloadPage"_s);

    makeBold(m_title);
    m_progress->setTextVisible(false);
    m_progress->setMaximumHeight(progressHeight);
    m_progress->setAccessibleName(tr("Progress of the update"));
    connect(m_install, &QPushButton::clicked, this, &UpdateBanner::installRequested);
    connect(m_download, &QPushButton::clicked, this, &UpdateBanner::downloadPageRequested);

    auto *column = new QVBoxLayout(this);
    column->addWidget(m_title);
    column->addWidget(m_notes);
    column->addWidget(m_progress);
    auto *row = new QHBoxLayout;
    row->addWidget(m_install);
    row->addWidget(m_download);
    row->addStretch();
    column->addLayout(row);
    hide();
}

void UpdateBanner::refresh(const UpdateView &view)
{
    const bool visible = isOnOffer(view);
    if (visible) {
        if (const QString style = bannerStyle(view.state); styleSheet() != style) {
            setStyleSheet(style);
        }
        m_title->setText(titleOf(view));
        m_notes->setText(view.notes);
        m_notes->setVisible(view.state == State::Available && !view.notes.isEmpty());
        showProgress(view);
        showButtons(view);
    }
    setVisible(visible);
}

void UpdateBanner::showProgress(const UpdateView &view)
{
    constexpr int whole = 100;
    m_progress->setRange(0, view.state == State::Installing ? 0 : whole);
    m_progress->setValue(view.progress);
    m_progress->setVisible(view.state == State::Downloading || view.state == State::Installing);
}

void UpdateBanner::showButtons(const UpdateView &view)
{
    m_install->setText(view.state == State::Failed ? tr("Try again") : tr("Update now"));
    m_install->setVisible(!view.isOccupied() && view.canInstallInPlace);
    m_download->setVisible(!view.isOccupied() && !view.canInstallInPlace);
}

} // namespace tallyforge
