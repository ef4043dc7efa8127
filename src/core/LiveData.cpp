// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/LiveData.h"

#include "common/JsonText.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

bool isAcceptedType(const QString &type)
{
    return type.isEmpty() || type == "state"_L1 || type == "heartbeat"_L1 || type == "auth_ok"_L1;
}

// Bookkeeping of the envelope, never shown: the names are reserved wherever the fields stand.
bool isReserved(const QString &name)
{
    static constexpr std::array names{
        "type"_L1,   "seq"_L1,          "ts_ms"_L1,      "v"_L1,        "sport"_L1,
        "online"_L1, "device_ts_ms"_L1, "fw_version"_L1, "transport"_L1};
    return std::any_of(names.begin(), names.end(),
                       [&name](QLatin1StringView reserved) { return name == reserved; });
}

QJsonObject fieldsOf(const QJsonObject &envelope)
{
    for (const QLatin1StringView key : {"fields"_L1, "data"_L1}) {
        const QJsonValue inner = envelope.value(key);
        if (inner.isObject()) {
            return inner.toObject();
        }
    }
    return envelope;
}

} // namespace

LiveData::LiveData(QObject *parent)
    : QObject(parent)
{
}

bool LiveData::ingest(const QJsonObject &envelope)
{
    if (envelope.isEmpty() || !isAcceptedType(envelope.value("type"_L1).toString())) {
        return false;
    }
    const QJsonObject fields = fieldsOf(envelope);

    QMutexLocker lock(&m_mutex);
    const bool sportChanged = mergeSport(envelope);
    const QStringList names = mergeFields(fields);
    stampTime();
    lock.unlock();

    if (!names.isEmpty()) {
        Q_EMIT fieldsChanged(names);
    }
    if (sportChanged || !names.isEmpty()) {
        Q_EMIT changed();
    }
    return true;
}

// The text is kept, because making it takes longer than all the rest of a snapshot.
void LiveData::stampTime()
{
    const qint64 second = QDateTime::currentSecsSinceEpoch();
    if (m_updatedAt.isEmpty() || second != m_updatedAtSecond) {
        m_updatedAtSecond = second;
        m_updatedAt = QDateTime::fromSecsSinceEpoch(second, QTimeZone::UTC).toString(Qt::ISODate);
    }
}

bool LiveData::mergeSport(const QJsonObject &envelope)
{
    const QString sport = envelope.value("sport"_L1).toString();
    if (sport.isEmpty() || sport == m_sport) {
        return false;
    }
    m_sport = sport;
    return true;
}

QStringList LiveData::mergeFields(const QJsonObject &fields)
{
    QStringList names;
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        const QString name = field.key();
        const QJsonValue value = field.value();
        if (isReserved(name) || value.isArray() || value.isObject()) {
            continue;
        }
        const QString text = jsonToText(value);
        const auto known = m_fields.find(name);
        if (known == m_fields.end()) {
            m_fields.insert(name, text);
        } else if (*known != text) {
            *known = text;
        } else {
            continue;
        }
        names.append(name);
    }
    return names;
}

void LiveData::clear()
{
    QMutexLocker lock(&m_mutex);
    if (m_fields.isEmpty() && m_sport.isEmpty()) {
        return;
    }
    m_fields.clear();
    m_sport.clear();
    m_updatedAt.clear();
    lock.unlock();

    Q_EMIT fieldsChanged({});
    Q_EMIT changed();
}

QString LiveData::sport() const
{
    const QMutexLocker lock(&m_mutex);
    return m_sport;
}

QStringList LiveData::fieldNames() const
{
    const QMutexLocker lock(&m_mutex);
    return m_fields.keys();
}

QString LiveData::value(const QString &name) const
{
    const QMutexLocker lock(&m_mutex);
    return m_fields.value(name);
}

QJsonObject LiveData::toJson() const
{
    return QJsonDocument::fromJson(toCompactJson()).object();
}

// Every change goes to other programs as this text. It is written straight from the fields, because
// an object of JSON would take several times as long, more than sending the text to a reader does.
QByteArray LiveData::toCompactJson() const
{
    QByteArray json;
    const QMutexLocker lock(&m_mutex);
    constexpr qsizetype usualField = 48;
    json.reserve((m_fields.size() + 2) * usualField);
    json.append("{\"fields\":{");
    bool first = true;
    for (auto field = m_fields.begin(); field != m_fields.end(); ++field) {
        if (!std::exchange(first, false)) {
            json.append(',');
        }
        appendJsonString(json, field.key());
        json.append(':');
        appendJsonString(json, field.value());
    }
    json.append("},\"source\":");
    appendJsonString(json, m_sourceLabel);
    json.append(",\"sport\":");
    appendJsonString(json, m_sport);
    json.append(",\"updated_at\":");
    appendJsonString(json, m_updatedAt);
    return json.append('}');
}

void LiveData::setSourceLabel(const QString &label)
{
    if (label == m_sourceLabel) {
        return;
    }
    m_sourceLabel = label;
    Q_EMIT sourceChanged();
}

} // namespace tallyforge
