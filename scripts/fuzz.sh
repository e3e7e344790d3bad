#!/usr/bin/env bash
# Feeds the decoders of stored and foreign data with whatever breaks them. Ends at the first input that does.
#
#   scripts/fuzz.sh [--keep] [SECONDS [NAME...]]     SECONDS for each, 60 unless given; NAME: a folder of tests/fuzz/corpus
#
#   --keep      take what reached new code over into tests/fuzz/corpus, which the ordinary tests replay
#
# An input that breaks something is build/fuzz/NAME-crash-*: put it into tests/fuzz/corpus/NAME together with the mend.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"
readonly corpus=$root/tests/fuzz/corpus build=$root/build/fuzz
readonly longest=1024 most_kept=60

keep=
if [[ ${1:-} == --keep ]]; then
    keep=1
    shift
fi
seconds=${1:-60}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "'$seconds' is no number of seconds; see the top of this file"
names=("${@:2}")
((${#names[@]})) || mapfile -t names < <(ls "$corpus")
for name in "${names[@]}"; do
    [[ -d $corpus/$name ]] || fail "tests/fuzz/corpus has no folder '$name'"
done

# Replaces the kept inputs, seeds apart, by a small set that reaches the same code; of a larger one the longest, which
# reach most.
keep_found() {
    local name=$1 minimal=$build/minimal/$1
    rm -rf -- "$minimal"
    mkdir -p "$minimal"
    "$build/fuzz_$name" -set_cover_merge=1 -use_counters=0 -max_len=$longest "$minimal" "$corpus/$name" "$build/found/$name" \
        >"$build/$name-merge.log" 2>&1 || fail "merging failed; see $build/$name-merge.log"
    find "$corpus/$name" -type f ! -name 'seed*' -delete
    (cd -- "$minimal" && find . -type f -printf '%s %f\n' | sort -rn | sed -n "1,${most_kept}s/.* //p" |
        xargs cp -t "$corpus/$name")
}

"$root/scripts/setup.sh" --fuzz
cmake -S "$root/tests/fuzz/fuzzers" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ >/dev/null
cmake --build "$build"
for name in "${names[@]}"; do
    printf '\n== %s\n' "$name"
    mkdir -p "$build/found/$name"
    words=json
    [[ $name != documents ]] || words=xml
    "$build/fuzz_$name" -dict="$root/tests/fuzz/fuzzers/$words.dict" -max_total_time="$seconds" -max_len=$longest -timeout=5 -rss_limit_mb=1024 -print_final_stats=1 \
        -artifact_prefix="$build/$name-" "$build/found/$name" "$corpus/$name" 2>"$build/$name.log" || {
        tail -n 60 "$build/$name.log"
        fail "an input breaks the decoder of $name; see $build/$name.log"
    }
    grep -E '^stat::(number_of_executed_units|average_exec)' "$build/$name.log"
    [[ -z $keep ]] || keep_found "$name"
done
