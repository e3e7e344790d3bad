#!/usr/bin/env bash
# Builds Quillbay and starts it. Without a display it runs on a private one instead, saves a picture of the grid
# to build/quillbay.png and ends: the applications are those of the user, the state it writes is thrown away.
#
#   scripts/run.sh [URL...]
#
# Environment: QUILLBAY_START_TIMEOUT, seconds to wait for the grid without a display (60).
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

readonly program=$root/build/release/bin/quillbay
readonly picture=$root/build/quillbay.png
readonly log=$logs/run.log
readonly timeout=${QUILLBAY_START_TIMEOUT:-60}

if has_display; then
    "$root/scripts/build.sh" release quillbay
    exec "$program" "$@"
fi

echo 'No display (neither DISPLAY nor WAYLAND_DISPLAY is set): Quillbay will run on a private one for a picture'
"$root/scripts/setup.sh" --headless
"$root/scripts/build.sh" release quillbay

started=()
private=$(mktemp -d "${TMPDIR:-/tmp}/quillbay-run.XXXXXX")
finish() {
    local i
    for ((i = ${#started[@]} - 1; i >= 0; i--)); do
        kill "${started[i]}" 2>/dev/null || true
        wait "${started[i]}" 2>/dev/null || true
    done
    rm -rf -- "$private"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# Starts a program in the background and keeps its id for the end: one that does not end when told to is killed.
start() {
    timeout --kill-after=5 "$((timeout + 60))" "$@" &
    started+=($!)
}

# Waits for a line that matches a pattern and leaves the match in BASH_REMATCH. The line comes on a descriptor from the
# program started last; that program's end, or the deadline, ends the wait and the script.
#   await_line DESCRIPTOR PATTERN WHO BEFORE-WHAT
await_line() {
    local line rest=
    while ((SECONDS < deadline)); do
        if read -r -t 1 -u "$1" line; then
            line=$rest$line rest=
            printf '%s\n' "$line" >>"$log"
            [[ ! $line =~ $2 ]] || return 0
        elif kill -0 "${started[-1]}" 2>/dev/null; then
            rest+=$line
        else
            fail "$3 ended before $4; see $log"
        fi
    done
    fail "$3 took longer than $timeout seconds before $4; see $log"
}

start_display() {
    mkfifo "$private/display"
    exec 3<>"$private/display"
    start Xvfb -displayfd 3 -screen 0 1440x900x24 -nolisten tcp >>"$log" 2>&1
    await_line 3 '^[0-9]+$' 'the private display' 'it was ready'
    exec 3<&-
    export DISPLAY=:${BASH_REMATCH[0]}
    unset WAYLAND_DISPLAY
}

# A bus that starts no services: nothing but Quillbay runs on it.
start_bus() {
    cat >"$private/bus.conf" <<CONF
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=$private</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
CONF
    mkfifo "$private/bus"
    exec 3<>"$private/bus"
    start dbus-daemon --config-file="$private/bus.conf" --nofork --print-address=3 >>"$log" 2>&1
    await_line 3 '^unix:.*' 'the private session bus' 'it was ready'
    exec 3<&-
    export DBUS_SESSION_BUS_ADDRESS=${BASH_REMATCH[0]}
}

start_program() {
    local folder
    for folder in CONFIG STATE CACHE RUNTIME; do
        mkdir -m 700 "$private/$folder"
    done
    mkfifo "$private/output"
    exec 3<>"$private/output"
    XDG_CONFIG_HOME=$private/CONFIG XDG_STATE_HOME=$private/STATE XDG_CACHE_HOME=$private/CACHE \
        XDG_RUNTIME_DIR=$private/RUNTIME XDG_SESSION_TYPE=x11 QT_QPA_PLATFORM=xcb \
        start "$program" >&3 3<&- 2>>"$log"
}

save_picture() {
    local quoted=${picture//\\/\\\\}
    quoted=${quoted//\'/\\\'}
    gdbus call --session --timeout 20 --dest org.quillbay.Quillbay --object-path /org/quillbay/Quillbay \
        --method org.freedesktop.Application.ActivateAction save-picture "[<'$quoted'>]" '{}' >>"$log" 2>&1 ||
        fail "Quillbay did not take the call for a picture; see $log"
}

mkdir -p "$logs"
: >"$log"
rm -f -- "$picture"
deadline=$((SECONDS + timeout))
start_display
start_bus
start_program
await_line 3 'Showing ([0-9]+) applications?$' Quillbay 'its grid stood'
applications=${BASH_REMATCH[1]}
save_picture
await_line 3 '(Saved|Failed to save) (.*)' Quillbay 'it had saved the picture'
[[ ${BASH_REMATCH[1]} == Saved && -s $picture ]] || fail "no picture: ${BASH_REMATCH[0]}"
printf 'Picture: %s (%d applications found)\n' "$picture" "$applications"
