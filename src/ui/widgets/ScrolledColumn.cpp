// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/ScrolledColumn.h"

#include <QScrollArea>
#include <QVBoxLayout>

namespace tallyforge {

QVBoxLayout *scrolledColumn(QWidget *parent)
{
    auto *outer = new QVBoxLayout(parent);
    outer->setContentsMargins({});
    auto *area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus); // keys that scroll come to it from what has the focus
    outer->addWidget(area);
    auto *content = new QWidget(area->viewport());
    auto *column = new QVBoxLayout(content);
    area->setWidget(content);
    return column;
}

} // namespace tallyforge
