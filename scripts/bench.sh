#!/usr/bin/env bash
# Builds the release preset's benchmarks and runs them one after the other.
#
#   scripts/bench.sh [NAME...]      those of bench/benchmarks.txt unless some are named
#
# Each line of bench/benchmarks.txt is the name of a benchmark's build target and its arguments.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

declare -A arguments=()
names=()
while read -r name rest; do
    names+=("$name")
    arguments[$name]=$rest
done < <(sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "$root/bench/benchmarks.txt")
((${#names[@]})) || fail 'bench/benchmarks.txt names no benchmark'
(($# == 0)) || names=("$@")
for name in "${names[@]}"; do
    [[ -v arguments[$name] ]] || fail "bench/benchmarks.txt has no benchmark '$name'"
done

"$root/scripts/setup.sh" --tests
"$root/scripts/build.sh" release "${names[@]}"
for name in "${names[@]}"; do
    printf '\n== %s\n' "$name"
    read -ra given <<<"${arguments[$name]}"
    "$root/build/release/bin/$name" "${given[@]}"
done
