// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Adds sources to a scene of the real libobs.

#include "tests/support/FakeFrontend.h"
#include "tests/support/ObsHost.h"
#include "ui/dock/SceneSources.h"

#include <QTest>

#include <obs.hpp>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

class TestSceneSources : public QObject
{
    Q_OBJECT

    std::unique_ptr<ObsHost> m_host;

    static QStringList itemsOf(obs_scene_t *scene)
    {
        QStringList names;
        const auto keep = [](obs_scene_t *, obs_sceneitem_t *item, void *param) {
            const OBSDataAutoRelease settings = obs_source_get_settings(obs_sceneitem_get_source(item));
            static_cast<QStringList *>(param)->append(
                QString::fromUtf8(obs_source_get_name(obs_sceneitem_get_source(item))) + u':' +
                QString::fromUtf8(obs_data_get_json(settings)));
            return true;
        };
        obs_scene_enum_items(scene, keep, &names);
        return names;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_host = std::make_unique<ObsHost>();
        QVERIFY(m_host->isUp());
        obs_source_info info{};
        info.id = "tallyforge_text";
        info.type = OBS_SOURCE_TYPE_INPUT;
        info.get_name = [](void *) { return "Text"; };
        info.create = [](obs_data_t *, obs_source_t *source) -> void * { return source; };
        info.destroy = [](void *) {};
        obs_register_source(&info);
        info.id = "failing";
        info.create = [](obs_data_t *, obs_source_t *) -> void * { return nullptr; };
        obs_register_source(&info);
    }
    void cleanupTestCase()
    {
        m_host.reset();
        QCOMPARE(ObsHost::shutdown(), 0);
    }

    void names()
    {
        const OBSSceneAutoRelease first = obs_scene_create("first");
        const OBSSceneAutoRelease second = obs_scene_create("second");
        addSourceToScene("tallyforge_text", u"Score"_s, "{a}"); // without a scene
        frontend().scene = obs_scene_get_source(first);
        addSourceToScene("tallyforge_text", u"Score"_s, "{a}");
        addSourceToScene("tallyforge_text", u"Score"_s, nullptr);
        frontend().scene = obs_scene_get_source(second);
        addSourceToScene("tallyforge_text", u"Score"_s, "{a}");
        QCOMPARE(itemsOf(first), (QStringList{u"Score:{\"template\":\"{a}\"}"_s, u"Score 2:{}"_s}));
        QCOMPARE(itemsOf(second), QStringList{u"Score 3:{\"template\":\"{a}\"}"_s});
        QCOMPARE(frontend().opened, (QStringList{u"Score"_s, u"Score 2"_s, u"Score 3"_s}));
        for (obs_scene_t *scene : {first.Get(), second.Get()}) { // as OBS does
            obs_source_remove(obs_scene_get_source(scene));
        }
    }
};

QTEST_GUILESS_MAIN(TestSceneSources)
#include "tst_scene_sources.moc"
