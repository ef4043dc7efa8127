// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"

#include <QObject>
#include <QString>

namespace tallyforge {

class HeldSession;
class ReceiverPage;

/// The conversation between the page about a wireless receiver and the receiver. It does nothing
/// while the session isn't over a cable.
class ReceiverPairing final : public QObject
{
    Q_OBJECT

public:
    /// Becomes a child of the page. held must outlive the page.
    ReceiverPairing(const HeldSession &held, ReceiverPage *page);

    /// Shows the receiver's last report, and each later one.
    void follow();
    /// The key that the receiver has made since follow(), empty for none; a secret.
    [[nodiscard]] QString newKey() const { return m_newKey; }

private:
    void refresh();
    void pair(const QString &key, bool generate);

    const HeldSession &m_held;
    ReceiverPage *const m_page;
    QMetaObject::Connection m_reports;
    Generation m_followed; // answers are about the connection in which they were asked for
    QString m_address;     // of the receiver that was followed last
    QString m_newKey;
};

} // namespace tallyforge
