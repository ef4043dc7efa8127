// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/UpdateRequest.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <chrono>

class QNetworkAccessManager;

namespace tallyforge {

/// Gets one manifest, whatever the server sends: of a longer one the first mebibyte counts, the
/// rest is neither held nor waited for, and all of it has to come within one span of time.
/// Destroying the fetch ends it. Main thread only.
class ManifestFetch final : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 maxBytes = qint64(1024) * 1024;

    /// network outlives the fetch. whole is how long it may take altogether.
    ManifestFetch(QNetworkAccessManager *network, const QNetworkRequest &request,
                  std::chrono::milliseconds whole, QObject *parent = nullptr);

Q_SIGNALS:
    /// Comes once. Without an answer of success ok is false and the body means nothing.
    void finished(bool ok, const QByteArray &body);

private:
    void read();
    void finish();

    UpdateReply m_reply;
    QByteArray m_body;
    QTimer m_limit;
    bool m_finished = false;
};

} // namespace tallyforge
