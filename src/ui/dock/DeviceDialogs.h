// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace tallyforge {

/// Makes the dialogs about devices that this version doesn't have yet. The button of an empty
/// function is off.
struct DeviceDialogs
{
    std::function<QWidget *(const QString &deviceId, QWidget *parent)> manage;
};

} // namespace tallyforge
