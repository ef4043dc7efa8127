#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Brings translation files up to date with the texts in src/ and helper/. New texts are marked there as
# unfinished, to be translated by hand or in Qt Linguist. Runs inside the sandbox.
# Usage: translations.sh [FILE…]      (all in translations/; a new one, such as
#                                      translations/tallyforge_fr.ts, begins a language)
set -euo pipefail

(($#)) || set -- translations/*.ts
# Without the places in the sources, a file changes only when a text does.
"$(pkg-config --variable=bindir Qt6Core)/lupdate" src helper -I src -extensions cpp,h -locations none \
    -no-obsolete -source-language en -warnings-are-errors -ts "$@"
