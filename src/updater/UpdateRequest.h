// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QNetworkReply>
#include <QNetworkRequest>

#include <chrono>

class QNetworkAccessManager;

namespace tallyforge {

struct UpdateConfig;

/// A request of the updater, which follows redirects that are no less safe, past every cache.
/// silence is how long it may stand still.
[[nodiscard]] QNetworkRequest updateRequest(const QString &url, const UpdateConfig &config,
                                            std::chrono::milliseconds silence);

/// A reply on its way, which holds at most 64 KiB that nobody has read. Its owner hears no more of
/// it once it has destroyed it.
class UpdateReply final
{
public:
    /// Sends the request. network and owner outlive it.
    UpdateReply(QNetworkAccessManager *network, const QNetworkRequest &request, QObject *owner);
    ~UpdateReply();
    Q_DISABLE_COPY_MOVE(UpdateReply)

    [[nodiscard]] QNetworkReply *operator->() const { return m_reply; }
    [[nodiscard]] QNetworkReply *get() const { return m_reply; }

private:
    QNetworkReply *const m_reply;
    QObject *const m_owner;
};

/// Whether a reply has come to its end, or so far, without an error and with a status of success.
[[nodiscard]] bool succeeded(const QNetworkReply &reply);

} // namespace tallyforge
