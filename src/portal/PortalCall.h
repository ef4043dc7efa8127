// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "portal/PortalTypes.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>

class QNetworkReply;

namespace tallyforge {

/// One request to the portal, from its sending to its result. It ends once, in finished(), and then
/// deletes itself; a call that is deleted before ends silently. A reply that takes longer than the
/// limit counts as none, and one of more than maxBytes as a failure.
class PortalCall final : public QObject
{
    Q_OBJECT

public:
    enum class Kind {
        InSession, ///< belongs to the session under which it was sent
        SignIn,    ///< begins a session when it is accepted
        Restore,   ///< the same, without a wish of the user
        SignOut,   ///< nothing depends on its reply
    };

    /// As much as the main thread can parse in a few milliseconds.
    static constexpr qint64 maxBytes = 1 << 20;

    /// Takes the reply over. limit is for the whole request, however lively its reply is.
    PortalCall(Kind kind, QNetworkReply *reply, std::chrono::milliseconds limit, QObject *parent);
    ~PortalCall() override;

    [[nodiscard]] Kind kind() const { return m_kind; }

    /// Ends the call because its session has ended: the request is given up, its reply and the
    /// cookies in it count no more, and finished() tells so from the event loop.
    void endWithSession();

Q_SIGNALS:
    void finished(const tallyforge::PortalResult &result);

private:
    void onReadyRead();
    void onReplyFinished();
    void deliver(const PortalResult &result);

    const Kind m_kind;
    const QPointer<QNetworkReply> m_reply;
    QTimer m_limit;
    bool m_isTooLong = false;
    bool m_isOver = false; // its result is known
};

} // namespace tallyforge
