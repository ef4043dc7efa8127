// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/LiveData.h"

#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(text).object();
}

} // namespace

class TestLiveData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ingest_data()
    {
        QTest::addColumn<QByteArray>("envelope");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QByteArray>("fields");
        QTest::newRow("empty object") << QByteArray("{}") << false << QByteArray("{}");
        QTest::newRow("refused type") << QByteArray(R"({"type":"auth_fail","a":1})") << false << QByteArray("{}");
        QTest::newRow("type in other case") << QByteArray(R"({"type":"State","a":1})") << false << QByteArray("{}");
        QTest::newRow("fields at the top, no type")
            << QByteArray(R"({"home_score":3,"seq":9})") << true << QByteArray(R"({"home_score":"3"})");
        QTest::newRow("type of another kind counts as none")
            << QByteArray(R"({"type":5,"a":"x"})") << true << QByteArray(R"({"a":"x"})");
        QTest::newRow("in fields, before data")
            << QByteArray(R"({"type":"state","fields":{"a":"x","l":[1],"o":{}},"data":{"b":1}})") << true
            << QByteArray(R"({"a":"x"})");
        QTest::newRow("in data when fields is no object")
            << QByteArray(R"({"type":"auth_ok","fields":[1],"data":{"b":true}})") << true
            << QByteArray(R"({"b":"true"})");
        QTest::newRow("reserved names inside too")
            << QByteArray(
                   R"({"fields":{"type":"t","seq":1,"ts_ms":1,"v":1,"sport":"s","online":true,
                "device_ts_ms":1,"fw_version":"f","transport":"t","n":null}})")
            << true << QByteArray(R"({"n":""})");
        QTest::newRow("heartbeat") << QByteArray(R"({"type":"heartbeat","seq":1,"ts_ms":2})") << true
                                   << QByteArray("{}");
    }
    void ingest()
    {
        QFETCH(QByteArray, envelope);
        QFETCH(bool, accepted);
        QFETCH(QByteArray, fields);
        LiveData live;
        QSignalSpy changed(&live, &LiveData::changed);
        QCOMPARE(live.ingest(json(envelope)), accepted);
        const QJsonObject snapshot = live.toJson();
        QCOMPARE(snapshot.value(u"fields"_s).toObject(), json(fields));
        QCOMPARE(!snapshot.value(u"updated_at"_s).toString().isEmpty(), accepted);
        QCOMPARE(changed.count(), fields == "{}" ? 0 : 1);
        QCOMPARE(snapshot.keys(), (QStringList{u"fields"_s, u"source"_s, u"sport"_s, u"updated_at"_s}));
    }

    void mergesAndSignalsOnlyWhatChanged()
    {
        LiveData live;
        QStringList events;
        connect(&live, &LiveData::fieldsChanged, &live, [&](const QList<QString> &names) {
            events.append(u"fields "_s + names.join(u','));
            QVERIFY(live.value(u"a"_s).size() < 3); // the lock is free in a slot
        });
        connect(&live, &LiveData::changed, &live, [&] { events.append(u"changed"_s); });

        live.ingest(json(R"({"sport":"basketball","fields":{"b":1,"a":2}})"));
        live.ingest(json(R"({"sport":"basketball","fields":{"b":1,"a":2}})"));
        live.ingest(json(R"({"sport":"","fields":{"b":5}})"));
        live.ingest(json(R"({"sport":"soccer","fields":{}})"));
        QCOMPARE(events, (QStringList{u"fields a,b"_s, u"changed"_s, u"fields b"_s, u"changed"_s, u"changed"_s}));
        QCOMPARE(live.fieldNames(), (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(live.value(u"b"_s), u"5"_s);
        QCOMPARE(live.value(u"none"_s), QString());
        QCOMPARE(live.sport(), u"soccer"_s);

        events.clear();
        live.setSourceLabel(u"Gym"_s);
        live.clear();
        live.clear();
        QCOMPARE(events, (QStringList{u"fields "_s, u"changed"_s}));
        QCOMPARE(live.toJson(), json(R"({"fields":{},"source":"Gym","sport":"","updated_at":""})"));
    }

    void updatedAtIsIsoUtc()
    {
        LiveData live;
        live.ingest(json(R"({"a":1})"));
        const QString at = live.toJson().value(u"updated_at"_s).toString();
        const QDateTime time = QDateTime::fromString(at, Qt::ISODate);
        QVERIFY2(at.endsWith(u'Z') && at.size() == 20, qPrintable(at));
        QVERIFY(qAbs(time.secsTo(QDateTime::currentDateTimeUtc())) < 10);
    }

    void labelSignalsOnceAChange()
    {
        LiveData live;
        QSignalSpy spy(&live, &LiveData::sourceChanged);
        live.setSourceLabel(u"A"_s);
        live.setSourceLabel(u"A"_s);
        QCOMPARE(spy.count(), 1);
    }
};

QTEST_GUILESS_MAIN(TestLiveData)
#include "tst_live_data.moc"
