// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"

#include <QObject>
#include <QPointer>

namespace tallyforge {

class App;
class DonePage;
class HeldSession;

/// Fills the last page of the guided way, and has the account take the device.
class Completion final : public QObject
{
    Q_OBJECT

public:
    /// Becomes a child of the page. held must outlive the page.
    Completion(App *app, const HeldSession &held, DonePage *page);

    /// Shows what is known of the device, whose name stands in where it has no id.
    void show(const QString &name);

private:
    void claim(const QString &code);

    const QPointer<App> m_app;
    const HeldSession &m_held;
    DonePage *const m_page;
    Generation m_shown; // a claim's answer is about the page as it was
};

} // namespace tallyforge
