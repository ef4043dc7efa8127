#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Puts all C++ files into the house's format. Runs inside the sandbox.
set -euo pipefail

mapfile -t files < <(scripts/sources.sh cpp)
clang-format -i "${files[@]}"
echo "format: ${#files[@]} files"
