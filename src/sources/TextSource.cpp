// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "sources/TextSource.h"

#include "plugin/App.h"
#include "plugin/Log.h"
#include "sources/TextTemplate.h"

#include <QMutex>
#include <QSet>

#include <obs-module.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr const char *templateKey = "template";

// Settings of the inner source that would give it another text than the template's.
constexpr std::array hiddenKeys{"text", "from_file", "text_file", "log_mode"};

// OBS's own text sources, the newest of each system first.
constexpr std::array innerKinds{"text_gdiplus_v3", "text_gdiplus_v2", "text_gdiplus",
                                "text_ft2_source_v2", "text_ft2_source"};

struct Instances
{
    QMutex mutex;
    QSet<TextSource *> all;
};

Instances &instances()
{
    static Instances instance;
    return instance;
}

// Raised by the main thread, lowered by the graphics thread.
std::atomic<bool> liveDataChanged = false;

const char *availableInnerKind()
{
    const auto kind = std::find_if(innerKinds.begin(), innerKinds.end(), [](const char *id) {
        return obs_get_source_output_flags(id) != 0;
    });
    return kind == innerKinds.end() ? nullptr : *kind;
}

bool isHidden(const char *key)
{
    return std::any_of(hiddenKeys.begin(), hiddenKeys.end(),
                       [key](const char *hidden) { return qstrcmp(key, hidden) == 0; });
}

void setDefault(obs_data_t *settings, const char *key, obs_data_item_t *value)
{
    switch (obs_data_item_gettype(value)) {
    case OBS_DATA_STRING:
        obs_data_set_default_string(settings, key, obs_data_item_get_string(value));
        break;
    case OBS_DATA_NUMBER:
        if (obs_data_item_numtype(value) == OBS_DATA_NUM_INT) {
            obs_data_set_default_int(settings, key, obs_data_item_get_int(value));
        } else {
            obs_data_set_default_double(settings, key, obs_data_item_get_double(value));
        }
        break;
    case OBS_DATA_BOOLEAN:
        obs_data_set_default_bool(settings, key, obs_data_item_get_bool(value));
        break;
    case OBS_DATA_OBJECT: {
        obs_data_t *object = obs_data_item_get_obj(value);
        obs_data_set_default_obj(settings, key, object);
        obs_data_release(object);
        break;
    }
    default:
        break;
    }
}

// The inner source's defaults too, so that the properties show them before anyone has chosen.
void setDefaults(obs_data_t *settings)
{
    if (const char *kind = availableInnerKind()) {
        obs_data_t *defaults = obs_get_source_defaults(kind);
        for (obs_data_item_t *item = obs_data_first(defaults); item; obs_data_item_next(&item)) {
            const char *key = obs_data_item_get_name(item);
            if (!isHidden(key)) {
                setDefault(settings, key, item);
            }
        }
        obs_data_release(defaults);
    }
    obs_data_set_default_string(settings, templateKey, TextSource::defaultTemplate);
}

QString valueOf(const LiveData &live, const QString &name)
{
    return name == "sport"_L1 ? live.sport() : live.value(name);
}

QString expandWithLiveData(const QString &text)
{
    QString result;
    const bool running = App::readLive([&](const LiveData &live) {
        result = expandTemplate(text, [&live](const QString &name) { return valueOf(live, name); });
    });
    return running ? result : expandTemplate(text, [](const QString &) { return QString(); });
}

QString hintText()
{
    QString names;
    App::readLive([&names](const LiveData &live) { names = live.fieldNames().join(", "_L1); });
    if (names.isEmpty()) {
        names = u"home_score, away_score, clock, period …"_s;
    }
    return QString::fromUtf8(obs_module_text("TextTemplateHint")).arg(names);
}

// Asks the graphics thread to refresh all sources before a frame, for as long as it lives.
class LiveDataFollower final : public QObject
{
public:
    using Tick = void (*)(void *, float);

    LiveDataFollower(App *app, Tick tick)
        : QObject(app)
        , m_tick(tick)
    {
        connect(&app->live(), &LiveData::changed, this, [] { liveDataChanged = true; });
        obs_add_tick_callback(m_tick, nullptr);
    }

    ~LiveDataFollower() override { obs_remove_tick_callback(m_tick, nullptr); }

private:
    const Tick m_tick;
};

} // namespace

TextSource::TextSource(const char *innerKind)
    : WrapperSource(innerKind, "Tallyforge text")
{
}

void *TextSource::create(obs_data_t *settings, obs_source_t *)
{
    const char *kind = availableInnerKind();
    if (kind == nullptr) {
        log::error(u"no OBS text source is available on this system"_s);
        return nullptr;
    }
    auto *source = new TextSource(kind);
    source->update(settings);

    const QMutexLocker lock(&instances().mutex);
    instances().all.insert(source);
    liveDataChanged = true; // the data may have moved on since update()
    return source;
}

void TextSource::destroy(void *data)
{
    auto *source = self<TextSource>(data);
    QMutexLocker lock(&instances().mutex);
    instances().all.remove(source);
    lock.unlock(); // releasing the inner source may wait for the graphics thread
    delete source;
}

void TextSource::update(obs_data_t *settings)
{
    m_template = QString::fromUtf8(obs_data_get_string(settings, templateKey));
    // Defaults as values, because the inner source must also forget a setting that the user has
    // reset.
    obs_data_t *innerSettings = obs_data_get_defaults(settings);
    obs_data_apply(innerSettings, settings);
    apply(innerSettings);
    obs_data_release(innerSettings);
}

void TextSource::apply(obs_data_t *innerSettings)
{
    obs_data_set_string(innerSettings, "text", expandWithLiveData(m_template).toUtf8().constData());
    obs_source_update(inner(), innerSettings);
}

// On the graphics thread, before OBS looks which sources have an update to draw in this frame.
// Under the lock nothing waits: updating a source that draws only stores its settings.
void TextSource::refreshChanged(void *, float)
{
    if (!liveDataChanged.exchange(false)) {
        return;
    }
    const QMutexLocker lock(&instances().mutex);
    for (TextSource *source : std::as_const(instances().all)) {
        obs_data_t *textOnly = obs_data_create();
        source->apply(textOnly);
        obs_data_release(textOnly);
    }
}

obs_properties_t *TextSource::properties(void *)
{
    // By kind: asking the inner source itself would read its settings on this thread.
    const char *kind = availableInnerKind();
    obs_properties_t *properties = kind ? obs_get_source_properties(kind) : obs_properties_create();
    for (const char *key : hiddenKeys) {
        obs_properties_remove_by_name(properties, key);
    }
    const QByteArray hint = hintText().toUtf8();
    obs_property_t *field = obs_properties_add_text(
        properties, templateKey, obs_module_text("TextTemplate"), OBS_TEXT_MULTILINE);
    obs_property_set_long_description(field, hint.constData());
    obs_properties_add_text(properties, "hint", hint.constData(), OBS_TEXT_INFO);
    return properties;
}

void TextSource::registerSource()
{
    obs_source_info info = describe<TextSource>("tallyforge_text", OBS_ICON_TYPE_TEXT);
    info.get_name = [](void *) { return obs_module_text("TallyforgeText"); };
    info.get_defaults = setDefaults;
    info.get_width = [](void *data) {
        return obs_source_get_width(self<TextSource>(data)->inner());
    };
    info.get_height = [](void *data) {
        return obs_source_get_height(self<TextSource>(data)->inner());
    };
    obs_register_source(&info);
}

void TextSource::followLiveData()
{
    new LiveDataFollower(App::get(), refreshChanged);
}

} // namespace tallyforge
