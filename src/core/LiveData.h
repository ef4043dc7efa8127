// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QStringList>

namespace tallyforge {

/// The current values of the scoreboard that is being followed. Field names and texts are whatever
/// the device sends; only the sport has a meaning here. Main thread, but for sport(), fieldNames()
/// and value(), which may be called from any thread.
class LiveData final : public QObject
{
    Q_OBJECT

public:
    explicit LiveData(QObject *parent = nullptr);

    /// Merges an envelope into the values. False, with nothing changed, for an empty object and for
    /// a type other than "state", "heartbeat", "auth_ok" or none.
    bool ingest(const QJsonObject &envelope);

    /// Forgets sport and fields. The source's label stays.
    void clear();

    [[nodiscard]] QString sport() const;
    /// The names of all fields, sorted.
    [[nodiscard]] QStringList fieldNames() const;
    /// A field's text, empty for an unknown name.
    [[nodiscard]] QString value(const QString &name) const;

    /// A snapshot with the keys "sport", "fields", "source" and "updated_at" (ISO 8601, UTC, or
    /// "").
    [[nodiscard]] QJsonObject toJson() const;
    /// The same as compact text.
    [[nodiscard]] QByteArray toCompactJson() const;

    /// The name of the device that feeds the data. Main thread.
    void setSourceLabel(const QString &label);
    [[nodiscard]] QString sourceLabel() const { return m_sourceLabel; }

Q_SIGNALS:
    /// A field or the sport has changed. Never fired for an envelope that repeats what is known.
    void changed();
    /// Fired before changed(), with the fields that changed; with an empty list after clear().
    void fieldsChanged(const QList<QString> &names);
    /// The source's label has changed.
    void sourceChanged();

private:
    void stampTime();
    bool mergeSport(const QJsonObject &envelope);
    QStringList mergeFields(const QJsonObject &fields);

    mutable QMutex m_mutex; // no signal is emitted while it is held
    QString m_sport;        // guarded by the mutex, like the fields and their time
    QMap<QString, QString> m_fields;
    QString m_updatedAt;          // ISO 8601
    qint64 m_updatedAtSecond = 0; // the same, since the epoch
    QString m_sourceLabel;
};

} // namespace tallyforge
