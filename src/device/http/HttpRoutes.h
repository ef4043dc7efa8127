// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QString>

namespace tallyforge {

/// Where a device's web interface offers a method of its administration.
struct HttpRoute
{
    bool found = false;
    QByteArray verb; ///< "GET", which takes no parameters, or "POST"
    QString path;
    bool form = false; ///< the parameters go form-encoded, not as JSON
};

/// The route of a method; not every method has one.
[[nodiscard]] HttpRoute httpRouteFor(const QString &method);

} // namespace tallyforge
