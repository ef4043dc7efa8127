// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/Translation.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace tallyforge {

std::unique_ptr<QTranslator> installTranslation(const QString &locale, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>();
    const bool found = translator->load(QLocale(locale), u"tallyforge"_s, u"_"_s, folder);
    // OBS has installed one of its own, which answers for every text. The last one is asked first.
    if (!found || !QCoreApplication::installTranslator(translator.get())) {
        return nullptr;
    }
    return translator;
}

} // namespace tallyforge
