// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/Group.h"

namespace tallyforge {

/// Adds the plug-in's sources to the scene that the user works on.
class SceneGroup final : public Group
{
    Q_OBJECT

public:
    /// textTemplate is what a new text source shows; it must outlive the group.
    explicit SceneGroup(const char *textTemplate, QWidget *parent);
};

} // namespace tallyforge
