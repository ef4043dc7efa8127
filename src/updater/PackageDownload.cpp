// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/PackageDownload.h"

#include "updater/PackageFile.h"
#include "updater/UpdateRequest.h"

#include <QNetworkAccessManager>

#include <utility>

namespace tallyforge {

namespace {

constexpr qint64 writeQueue = qint64(64) * 1024;
constexpr qint64 chunkSize = qint64(32) * 1024;

} // namespace

PackageDownload::PackageDownload(QNetworkAccessManager *network, const QNetworkRequest &request,
                                 std::shared_ptr<PackageFile> file, const Expected &expected,
                                 QObject *parent)
    : QObject(parent)
    , m_reply(network, request, this)
    , m_file(std::move(file))
    , m_expected(expected)
{
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &PackageDownload::advance);
    // Queued, so that a listener may delete the reply with all that belongs to it.
    connect(m_reply.get(), &QNetworkReply::downloadProgress, this, &PackageDownload::progressed,
            Qt::QueuedConnection);
    connect(
        m_reply.get(), &QNetworkReply::finished, this,
        [this] {
            m_replied = true;
            advance();
        },
        Qt::QueuedConnection);
}

void PackageDownload::advance()
{
    while (!m_stopped && m_queued < writeQueue && m_reply->bytesAvailable() > 0) {
        take(m_reply->read(chunkSize));
    }
    if (m_replied && m_queued == 0 && !m_closing) {
        m_closing = true;
        m_worker.run([file = m_file] { return file->close(); },
                     [this](const QByteArray &sum) { Q_EMIT finished(judge(sum)); });
    }
}

void PackageDownload::take(const QByteArray &bytes)
{
    m_count += bytes.size();
    if (m_count > m_expected.limit) {
        stop(Result::TooLarge);
        return;
    }
    m_queued += bytes.size();
    m_worker.run([file = m_file, bytes] { return file->append(bytes); },
                 [this, size = bytes.size()](bool written) {
                     m_queued -= size;
                     if (!written) {
                         stop(Result::NotWritten);
                     }
                     advance();
                 });
}

void PackageDownload::stop(Result result)
{
    if (!m_stopped) {
        m_stopped = result;
        m_reply->abort();
    }
}

PackageDownload::Result PackageDownload::judge(const QByteArray &sum) const
{
    if (m_stopped) {
        return *m_stopped;
    }
    if (sum.isEmpty()) {
        return Result::NotWritten;
    }
    if (!succeeded(*m_reply.get())) {
        return Result::Broken;
    }
    if (m_expected.size >= 1 && m_count != m_expected.size) {
        return Result::WrongSize;
    }
    return sum == m_expected.sha256 ? Result::Complete : Result::WrongSum;
}

} // namespace tallyforge
