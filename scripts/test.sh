#!/usr/bin/env bash
# Everything that must hold: installs what is missing, checks the sources, builds, and runs the tests of the release
# build, again of the one with sanitizers, and those of the analytics with the sanitizer for threads. The last line
# counts; what failed is named above it. Logs: build/logs.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

passed=0
failures=()
skipped=0

# Runs a step with its output in a log of its own; when it fails, shows the end of that log.
#   step NAME COMMAND...
step() {
    local name=$1 log=$logs/${1// /-}.log before=$SECONDS status=ok
    shift
    "$@" >"$log" 2>&1 </dev/null || status=FAILED
    printf '%-6s %s (%d s)\n' "$status" "$name" "$((SECONDS - before))"
    [[ $status == FAILED ]] || return 0
    tail -n 200 "$log"
    return 1
}

# A step that counts as one test.
check() {
    if step "$@"; then
        passed=$((passed + 1))
    else
        failures+=("$1")
        return 1
    fi
}

# The closing lines of a run of ctest as "passed N", "skipped NAME" and "failed NAME" lines.
results_of() {
    awk '
        match($0, /[0-9]+ tests? failed out of [0-9]+$/) {
            split(substr($0, RSTART), word, " ")
            failed = word[1]; of = word[6]; kind = "?"; skipped = 0
        }
        kind != "" && /^The following tests did not run:/ { kind = "skipped" }
        kind != "" && /^The following tests FAILED:/ { kind = "failed" }
        kind != "" && /^\t *[0-9]+ - .* \(.*\)/ {
            skipped += / \(Skipped\)$/
            sub(/^\t *[0-9]+ - /, ""); sub(/ \([^()]*\).*$/, "")
            print kind, $0
        }
        END { print "passed", of - failed - skipped }' "$1"
}

run_tests() {
    local preset=$1 name="tests $1" known=${#failures[@]} kind value ran=1
    step "$name" ctest --preset "$preset" -j "$(nproc)" || ran=
    while read -r kind value; do
        case $kind in
            passed)
                passed=$((passed + value))
                ((value)) || failures+=("$name: no test passed")
                ;;
            skipped) skipped=$((skipped + 1)) ;;
            failed) failures+=("$name: $value") ;;
        esac
    done < <(results_of "$logs/${name// /-}.log")
    [[ -n $ran ]] || ((${#failures[@]} > known)) || failures+=("$name: ctest failed")
}

mkdir -p "$logs"
cd -- "$root"
if check setup "$root/scripts/setup.sh" --tests; then
    check 'lint format' "$root/scripts/lint.sh" format || true
    check 'lint shell' "$root/scripts/lint.sh" shell || true
    for preset in release asan tsan; do
        targets=()
        [[ $preset != tsan ]] || targets=(analytics_tests)
        check "build $preset" "$root/scripts/build.sh" "$preset" ${targets[0]+"${targets[@]}"} && run_tests "$preset"
        [[ $preset != release ]] || check 'lint qml' "$root/scripts/lint.sh" qml || true
    done
fi

((${#failures[@]} == 0)) || printf 'Failed: %s\n' "${failures[@]}"
printf '%d passed, %d failed' "$passed" "${#failures[@]}"
((skipped == 0)) || printf ', %d skipped' "$skipped"
printf '\n'
((${#failures[@]} == 0))
