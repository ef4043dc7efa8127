#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Lists the project's files of a kind. Usage: sources.sh cpp|python|shell
set -euo pipefail

case ${1:-} in
    cpp) folders=(src tests bench helper packaging) names=(-name '*.cpp' -o -name '*.h') ;;
    python) folders=(sim demo tests bench scripts docs packaging) names=(-name '*.py') ;;
    shell) folders=(scripts .ci tests demo bench packaging) names=(-name '*.sh' -o -path '.ci/run') ;;
    *) echo "Usage: sources.sh cpp|python|shell" >&2; exit 2 ;;
esac
for folder in "${folders[@]}"; do
    [[ -d $folder ]] && find "$folder" -type f \( "${names[@]}" \)
done | sort
