// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "sources/GraphicsProperties.h"

#include "plugin/App.h"
#include "sources/ListRefresh.h"

#include <QThread>

#include <obs-module.h>
#include <obs.hpp>

#include <algorithm>
#include <memory>
#include <optional>

namespace tallyforge {

namespace {

using namespace graphics;

constexpr const char *refreshName = "refresh";
constexpr const char *statusName = "status";

using OutputsKnown = std::optional<AccountGraphics>; // nothing: the plug-in isn't running

// Hangs on a set of properties. A wait shares it, because the set may go meanwhile.
struct View
{
    OBSWeakSourceAutoRelease source; // none for the properties of the kind
    bool gone = false;
};

void attachView(obs_properties_t *properties, obs_source_t *source)
{
    auto *view = new std::shared_ptr<View>(std::make_shared<View>());
    (*view)->source = obs_source_get_weak_source(source);
    obs_properties_set_param(properties, view, [](void *param) {
        auto *attached = static_cast<std::shared_ptr<View> *>(param);
        (*attached)->gone = true;
        delete attached;
    });
}

std::shared_ptr<View> viewOf(obs_properties_t *properties)
{
    return *static_cast<std::shared_ptr<View> *>(obs_properties_get_param(properties));
}

obs_data_t *settingsOf(obs_source_t *source)
{
    return source ? obs_source_get_settings(source) : obs_data_create();
}

const GraphicsOutput *findOutput(const OutputsKnown &known, const char *id)
{
    if (!known) {
        return nullptr;
    }
    const auto found = std::find_if(
        known->outputs.begin(), known->outputs.end(),
        [id](const GraphicsOutput &output) { return output.id == QUtf8StringView(id); });
    return found == known->outputs.end() ? nullptr : &*found;
}

// The chosen graphic stays on show when the account's list doesn't have it.
void fillList(obs_property_t *list, obs_data_t *settings, const OutputsKnown &known)
{
    obs_property_list_clear(list);
    const char *id = obs_data_get_string(settings, idKey);
    const char *name = obs_data_get_string(settings, nameKey);
    if (*id != '\0' && findOutput(known, id) == nullptr) {
        obs_property_list_add_string(list, *name != '\0' ? name : id, id);
    }
    if (known) {
        for (const GraphicsOutput &output : known->outputs) {
            obs_property_list_add_string(list, output.name.toUtf8().constData(),
                                         output.id.toUtf8().constData());
        }
    }
    if (obs_property_list_item_count(list) == 0) {
        obs_property_list_add_string(list, obs_module_text("GraphicsNone"), "");
    }
}

QString statusText(const OutputsKnown &known)
{
    if (!known) {
        return {};
    }
    if (!known->signedIn) {
        return QString::fromUtf8(obs_module_text("GraphicsSignIn"));
    }
    return known->error.isEmpty()
               ? QString::fromUtf8(obs_module_text("GraphicsFound")).arg(known->outputs.size())
               : known->error;
}

// libobs calls this too whenever it makes the properties. A size that the user has set himself
// for the page that is already shown must survive that.
bool takeOverOutput(obs_properties_t *properties, obs_property_t *, obs_data_t *settings)
{
    const OutputsKnown known = App::graphics();
    const GraphicsOutput *output = findOutput(known, obs_data_get_string(settings, idKey));
    if (output == nullptr) {
        return false;
    }
    obs_data_set_string(settings, nameKey, output->name.toUtf8().constData());
    const QByteArray url = output->url.toUtf8();
    if (url != obs_data_get_string(settings, urlKey)) {
        obs_data_set_string(settings, urlKey, url.constData());
        obs_data_set_int(settings, widthKey, output->width);
        obs_data_set_int(settings, heightKey, output->height);
        // OBS has asked for an update before it called this, which may have been carried out.
        const OBSSourceAutoRelease source = obs_weak_source_get_source(viewOf(properties)->source);
        if (source) {
            obs_source_update(source, nullptr);
        }
    }
    return true;
}

// Has OBS's dialog make its rows anew, once the present call has returned.
void reloadLater(obs_source_t *source)
{
    if (App *app = App::get(); app && source) {
        const std::shared_ptr<obs_weak_source_t> weak(obs_source_get_weak_source(source),
                                                      obs_weak_source_release);
        QMetaObject::invokeMethod(
            app,
            [weak] {
                const OBSSourceAutoRelease shown = obs_weak_source_get_source(weak.get());
                obs_source_update_properties(shown);
            },
            Qt::QueuedConnection);
    }
}

void showListing(obs_properties_t *properties, obs_source_t *source)
{
    const OutputsKnown known = App::graphics();
    const OBSDataAutoRelease settings = settingsOf(source);
    if (obs_property_t *list = obs_properties_get(properties, idKey)) {
        fillList(list, settings, known);
    }
    if (obs_property_t *status = obs_properties_get(properties, statusName)) {
        obs_property_set_description(status, statusText(known).toUtf8().constData());
    }
}

// True has OBS's dialog redraw itself through the row of the button. After a wait that row may have
// gone, so the dialog is asked to make its rows anew instead. Remote control presses on a thread of
// its own, which must not wait.
bool refreshList(obs_properties_t *properties, obs_property_t *, void *)
{
    const std::shared_ptr<View> view = viewOf(properties);
    const OBSSourceAutoRelease source = obs_weak_source_get_source(view->source);
    auto refreshed = ListRefresh::AtOnce;
    if (!QThread::isMainThread()) {
        App::requestOutputs();
    } else if (App *app = App::get()) {
        refreshed = refreshGraphicsList(*app);
    }
    if (refreshed == ListRefresh::Dropped || view->gone) {
        return false;
    }
    showListing(properties, source);
    if (refreshed == ListRefresh::AfterWait) {
        reloadLater(source);
    }
    return refreshed == ListRefresh::AtOnce;
}

} // namespace

obs_properties_t *graphicsProperties(obs_source_t *source)
{
    const OutputsKnown known = App::graphics();
    const OBSDataAutoRelease settings = settingsOf(source);

    obs_properties_t *properties = obs_properties_create();
    attachView(properties, source);
    obs_property_t *list =
        obs_properties_add_list(properties, idKey, obs_module_text("GraphicsOutput"),
                                OBS_COMBO_TYPE_LIST, OBS_COMBO_FORMAT_STRING);
    fillList(list, settings, known);
    obs_property_set_modified_callback(list, takeOverOutput);
    obs_properties_add_button2(properties, refreshName, obs_module_text("GraphicsRefresh"),
                               refreshList, nullptr);
    obs_properties_add_text(properties, statusName, statusText(known).toUtf8().constData(),
                            OBS_TEXT_INFO);
    obs_properties_add_int(properties, widthKey, obs_module_text("Width"), smallestSize,
                           largestSize, 1);
    obs_properties_add_int(properties, heightKey, obs_module_text("Height"), smallestSize,
                           largestSize, 1);
    return properties;
}

} // namespace tallyforge
