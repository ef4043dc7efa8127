// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace tallyforge {

/// The scoreboards of one manufacturer. All entries but the label are keys, the vocabulary that
/// devices and the portal share.
struct ControllerFamily
{
    QString label;      ///< the manufacturer's name
    QStringList models; ///< each is its own label
    QStringList inputTypes;
    QStringList sports; ///< empty for all of allSports()
};

/// The known scoreboards by the manufacturer's key. Made at the first call, unchanged afterwards.
[[nodiscard]] const QMap<QString, ControllerFamily> &controllerCatalog();
/// The keys of all sports, in the order in which they are offered.
[[nodiscard]] QStringList allSports();

/// The name to show for a key, whether the catalog knows it or not. An empty key stays empty.
[[nodiscard]] QString manufacturerLabel(const QString &key);
[[nodiscard]] QString sportLabel(const QString &key);
[[nodiscard]] QString inputTypeLabel(const QString &key);

} // namespace tallyforge
