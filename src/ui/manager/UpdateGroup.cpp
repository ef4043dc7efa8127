// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/UpdateGroup.h"

#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QProgressBar>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tallyforge {

UpdateGroup::UpdateGroup(const QString &name, const QString &title, QWidget *parent)
    : Group(title, parent)
    , m_version(new ThemedLabel(this))
    , m_bar(new QProgressBar(this))
    , m_status(new ThemedLabel(this))
{
    setObjectName(name);
    m_version->setObjectName(name + u"Version"_s);
    m_bar->setObjectName(name + u"Progress"_s);
    m_bar->setAccessibleName(title);
    m_status->setObjectName(name + u"Status"_s);
    m_bar->setRange(0, 100);
    m_bar->setValue(0);
    m_bar->hide();
    for (ThemedLabel *label : {m_version, m_status}) {
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->hide();
    }
    column()->addWidget(m_version);
    column()->addWidget(m_bar);
    column()->addWidget(m_status);
}

QPushButton *UpdateGroup::addButton(const QString &name, const QString &text)
{
    auto *button = new WrappingButton(text, this);
    button->setObjectName(name);
    column()->insertWidget(column()->indexOf(m_bar), button);
    return button;
}

void UpdateGroup::showVersion(const QString &running)
{
    m_version->showText(tr("Running: %1").arg(running));
}

void UpdateGroup::begin()
{
    m_bar->setValue(0);
    showStatus({});
    m_bar->show();
}

int UpdateGroup::showProgress(double done, double total)
{
    m_bar->setValue(total > 0 ? int(std::clamp(done * 100 / total, 0.0, 100.0)) : 0);
    return m_bar->value();
}

void UpdateGroup::showStatus(const QString &text)
{
    m_status->showText(text);
}

} // namespace tallyforge
