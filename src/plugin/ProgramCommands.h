// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QString>

namespace tallyforge {

class App;

/// Answers the commands of other programs that ask the hosted server for more than the live values:
/// "status", "devices" and "use". The result is the reply without its "op"; an unknown command
/// gives the error "unknown_op".
[[nodiscard]] QJsonObject answerCommand(App &app, const QString &op, const QJsonObject &request);

} // namespace tallyforge
