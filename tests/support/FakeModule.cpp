// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "tests/support/FakeModule.h"

#include <QFile>

#include <obs-module.h>

namespace {

QString &configFolder()
{
    static QString folder;
    return folder;
}

} // namespace

void tallyforge::test::setConfigFolder(const QString &folder)
{
    configFolder() = folder;
}

// In a program of its own, these stand before those of libobs and of the module.

char *obs_module_get_config_path(obs_module_t *, const char *file)
{
    return bstrdup(QFile::encodeName(configFolder() + u'/' + QString::fromUtf8(file)).constData());
}

obs_module_t *obs_current_module(void)
{
    return nullptr;
}

const char *obs_module_text(const char *key)
{
    if (qstrcmp(key, "TextTemplateHint") == 0) {
        return "Fields: %1";
    }
    return qstrcmp(key, "GraphicsFound") == 0 ? "Found: %1" : key;
}
