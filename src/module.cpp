// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "common/BuildConfig.h"
#include "device/ble/BleBridge.h"
#include "platform/BluetoothHelper.h"
#include "plugin/App.h"
#include "plugin/LibobsApi.h"
#include "plugin/Log.h"
#include "plugin/Translation.h"
#include "plugin/WebSocketVendor.h"
#include "sources/sources.h"
#include "ui/dock/DockRegistration.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSslSocket>
#include <QTranslator>

#include <obs-module.h>

#include <dlfcn.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

obs_module_t *obs_module_pointer = nullptr;

QTranslator *translation = nullptr;

tallyforge::WebSocketVendor *vendor = nullptr;

// A bundle carries Qt plug-ins of its own, the TLS backend among them, without which HTTPS fails.
void registerBundledQtPlugins()
{
    namespace log = tallyforge::log;
    Dl_info self{};
    if (dladdr(reinterpret_cast<const void *>(&registerBundledQtPlugins), &self) == 0 ||
        self.dli_fname == nullptr || *self.dli_fname == '\0') {
        log::warning(u"could not locate the plugin bundle; HTTPS may fail"_s);
        return;
    }
    const QDir folder = QFileInfo(QFile::decodeName(self.dli_fname)).absoluteDir();
    const QString resources = QDir::cleanPath(folder.filePath(u"../Resources"_s));
    if (QFileInfo::exists(resources)) {
        QCoreApplication::addLibraryPath(resources);
    }
    log::info(
        u"Qt TLS backend available: %1"_s.arg(QSslSocket::supportsSsl() ? u"yes"_s : u"no"_s));
}

// Empty when this install has none.
QString bluetoothHelper()
{
    const QByteArray file = tallyforge::platform::bluetoothHelperFile().toUtf8();
    char *const found = obs_find_module_file(obs_module_pointer, file.constData());
    QString path = QString::fromUtf8(found);
    bfree(found);
    return path;
}

void loadTranslation()
{
    const QString data = QString::fromUtf8(obs_get_module_data_path(obs_module_pointer));
    translation = tallyforge::installTranslation(QString::fromUtf8(obs_get_locale()),
                                                 data + u"/translations"_s)
                      .release();
}

} // namespace

// By hand instead of by OBS_DECLARE_MODULE(), which would ask for the libobs of the build.
MODULE_EXPORT void obs_module_set_pointer(obs_module_t *module)
{
    obs_module_pointer = module;
}

obs_module_t *obs_current_module(void)
{
    return obs_module_pointer;
}

MODULE_EXPORT uint32_t obs_module_ver(void)
{
    using tallyforge::libobsApi;
    return MAKE_SEMANTIC_VERSION(uint32_t{libobsApi[0]}, libobsApi[1], libobsApi[2]);
}

OBS_MODULE_USE_DEFAULT_LOCALE("tallyforge-obs", "en-US")

MODULE_EXPORT const char *obs_module_name(void)
{
    return "Tallyforge";
}

MODULE_EXPORT const char *obs_module_author(void)
{
    return "Tallyforge";
}

MODULE_EXPORT const char *obs_module_description(void)
{
    return "Live Tallyforge scoreboard data, graphics and device setup inside OBS.";
}

bool obs_module_load(void)
{
    using namespace tallyforge;
    log::info(u"loading plugin %1"_s.arg(build_config::version()));
    registerBundledQtPlugins();
    loadTranslation();
    App::init();
    BleBridge::instance()->setHelperPath(bluetoothHelper());
    sources_register();
    sources_connect_live_data();
    dock_register(sources_default_text_template());
    return true;
}

// obs-websocket is loaded by now, if OBS has it.
void obs_module_post_load(void)
{
    using namespace tallyforge;
    vendor = new WebSocketVendor(*App::get());
}

void obs_module_unload(void)
{
    using namespace tallyforge;
    delete std::exchange(vendor, nullptr);
    dock_unregister();
    BleBridge::instance()->shutdown();
    App::shutdown();
    delete translation;
    translation = nullptr;
    log::info(u"plugin unloaded"_s);
}
