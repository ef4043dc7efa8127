// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/UpdateRequest.h"
#include "updater/Worker.h"

#include <QByteArray>
#include <QObject>

#include <memory>
#include <optional>

class QNetworkAccessManager;

namespace tallyforge {

class PackageFile;

/// One download into a file, summed up and written on a thread of its own. Holds less than a
/// mebibyte of it at a time, because the rest waits at the server until the disk can take it.
/// Destroying it ends the download and leaves the file as it is. Main thread only.
class PackageDownload final : public QObject
{
    Q_OBJECT

public:
    struct Expected
    {
        qint64 size = 0;   ///< bytes; 0 if unknown
        qint64 limit = 0;  ///< bytes that are taken at most
        QByteArray sha256; ///< lower-case hexadecimal
    };

    /// The first of these that fits.
    enum class Result {
        TooLarge,
        NotWritten,
        Broken, ///< an error of the network, or a status other than success
        WrongSize,
        WrongSum,
        Complete,
    };
    Q_ENUM(Result)

    /// Starts at once. network outlives the download; file is open and left to it.
    PackageDownload(QNetworkAccessManager *network, const QNetworkRequest &request,
                    std::shared_ptr<PackageFile> file, const Expected &expected,
                    QObject *parent = nullptr);

Q_SIGNALS:
    /// total is below 1 if the server doesn't tell.
    void progressed(qint64 received, qint64 total);
    /// Comes once, when the file has been closed.
    void finished(tallyforge::PackageDownload::Result result);

private:
    void advance();
    void take(const QByteArray &bytes);
    void stop(Result result);
    [[nodiscard]] Result judge(const QByteArray &sum) const;

    UpdateReply m_reply;
    const std::shared_ptr<PackageFile> m_file; // the worker's alone
    const Expected m_expected;
    qint64 m_count = 0;
    qint64 m_queued = 0;             // bytes that the worker hasn't written yet
    std::optional<Result> m_stopped; // set when the rest isn't wanted
    bool m_replied = false;
    bool m_closing = false;
    Worker m_worker{this};
};

} // namespace tallyforge
