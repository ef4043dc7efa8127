#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Runs every fuzz target, or FUZZ_ONLY, for FUZZ_SECONDS (30) each, inside the sandbox. A new input
# worth keeping is copied to tests/fuzz/corpus/NAME/ by hand.
set -euo pipefail

seconds=${FUZZ_SECONDS:-30}
findings=build/fuzz/findings
failed=()
ran=0

mkdir -p "$findings"

for source in tests/fuzz/fuzz_*.cpp; do
    name=$(basename "$source" .cpp)
    [[ ${FUZZ_ONLY:-$name} == "$name" ]] || continue
    ran=$((ran + 1))
    target=build/fuzz/tests/fuzz/$name
    log=build/fuzz/$name.log
    # Inputs that the fuzzer adds stay out of the tree.
    corpus=$(mktemp -d)
    seeds=tests/fuzz/corpus/$name
    [[ -d $seeds ]] || { echo "fuzz: $name has no corpus at $seeds"; exit 1; }
    cp -r "$seeds/." "$corpus"
    if "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$findings/$name-" "$corpus" >"$log" 2>&1; then
        awk -v name="$name" '
            /^stat::number_of_executed_units/ { runs = $2 }
            /^stat::average_exec_per_sec/ { rate = $2 }
            END {
                if (!runs) { print name ": ran nothing"; exit 1 }
                printf "%-32s %9d runs, %7d a second, nothing found\n", name, runs, rate
            }' "$log" || failed+=("$name")
    else
        tail -n 30 "$log"
        echo "$name: FOUND SOMETHING (log: $log, input: $findings/$name-…)"
        failed+=("$name")
    fi
done
((ran > 0)) || { echo "fuzz: there is no target ${FUZZ_ONLY:-}"; exit 1; }
((${#failed[@]} == 0)) || { echo "fuzz: failed: ${failed[*]}"; exit 1; }
echo "fuzz: $seconds s each, nothing found"
