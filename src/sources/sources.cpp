// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "sources/sources.h"

#include "sources/GraphicsSource.h"
#include "sources/TextSource.h"

namespace tallyforge {

void sources_register()
{
    TextSource::registerSource();
    GraphicsSource::registerSource();
}

void sources_connect_live_data()
{
    TextSource::followLiveData();
}

const char *sources_default_text_template()
{
    return TextSource::defaultTemplate;
}

} // namespace tallyforge
