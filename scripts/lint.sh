#!/usr/bin/env bash
# Checks the sources without running them. A check that finds something says what and fails.
#
#   scripts/lint.sh [CHECK...]      checks: format, shell, qml, tidy; without one, all of them
#
# qml reads the modules of the release build and tidy its compile commands: build that first (scripts/build.sh).
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"
readonly build=$root/build/release
cd -- "$root"

# Runs a command with the files that git tracks, as many runs at a time as there are cores.
#   over_files FILES-PER-RUN COMMAND... -- PATTERN...
over_files() {
    local per_run=$1 command=() files
    shift
    while [[ $1 != -- ]]; do
        command+=("$1")
        shift
    done
    files=$(git ls-files "$@") || return
    [[ -z $files ]] || xargs -d '\n' -n "$per_run" -P "$(nproc)" "${command[@]}" <<<"$files"
}

require_build() {
    [[ -e $build/build.ninja ]] || fail "$1 needs the release build: run scripts/build.sh first"
}

check_format() {
    over_files 50 clang-format --dry-run -Werror -- '*.cpp' '*.h'
}

check_shell() {
    over_files 50 shellcheck -x -- '*.sh' .ci/run
}

check_qml() {
    require_build qml
    local qmllint
    qmllint=$(qtpaths6 --query QT_HOST_BINS)/qmllint || return
    # The modules' own files by the targets that know their types, the tests' by hand.
    cmake --build "$build" --target all_qmllint || return
    over_files 50 "$qmllint" -I "$build/qml" -- 'tests/*.qml'
}

check_tidy() {
    require_build tidy
    over_files 1 clang-tidy --quiet -p "$build" -- 'src/*.cpp'
}

(($#)) || set -- format shell qml tidy
failed=
for check in "$@"; do
    declare -F "check_$check" >/dev/null || fail "no check is called '$check'"
    if "check_$check"; then
        printf 'ok: %s\n' "$check"
    else
        printf 'FAILED: %s\n' "$check"
        failed=1
    fi
done
[[ -z $failed ]]
