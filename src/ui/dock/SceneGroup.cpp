// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/SceneGroup.h"

#include "ui/dock/SceneSources.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

SceneGroup::SceneGroup(const char *textTemplate, QWidget *parent)
    : Group(tr("Show it in OBS"), parent)
{
    setObjectName(u"tallyforgeScene"_s);
    auto *text = new WrappingButton(tr("Add live score text to this scene"), this);
    text->setObjectName(u"tallyforgeAddText"_s);
    connect(text, &QPushButton::clicked, this, [textTemplate] {
        addSourceToScene("tallyforge_text", tr("Tallyforge Score"), textTemplate);
    });
    auto *graphic = new WrappingButton(tr("Add a graphic to this scene"), this);
    graphic->setObjectName(u"tallyforgeAddGraphic"_s);
    connect(graphic, &QPushButton::clicked, this,
            [] { addSourceToScene("tallyforge_graphics", tr("Tallyforge Graphics"), nullptr); });
    column()->addWidget(text);
    column()->addWidget(graphic);
    column()->addWidget(hint(tr("Graphics come from your Tallyforge account. Pick one from the "
                                "list in the source's properties."),
                             this));
}

} // namespace tallyforge
