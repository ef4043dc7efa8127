#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Lists the files that differ from where this branch left the main one, or from the commit before.
# Prints nothing where git can't tell: then no change is known.
cd "$(dirname "$0")/.." || exit 1
git() { command git -c safe.directory='*' "$@" 2>/dev/null; }

head=$(git rev-parse HEAD) || exit 0
base=$(git merge-base HEAD origin/HEAD) || base=$(git merge-base HEAD main) || base=
if [[ -z $base || $base == "$head" ]]; then
    base=$(git rev-parse HEAD~) || base=$head
fi
{
    git diff --name-only "$base" --
    git ls-files --others --exclude-standard
} | sort -u
exit 0
