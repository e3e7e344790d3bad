# shellcheck shell=bash
# Shared by the scripts of this folder: sourced, never run.

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)
# shellcheck disable=SC2034 # used by those that source this
logs=$root/build/logs

# Ends the script with one line for the user.
fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# The package names of the given lists in scripts/packages, one a line.
package_names() {
    local list
    for list in "$@"; do
        sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "$root/scripts/packages/$list.txt"
    done | sort -u
}

# Whether a window can be opened from here.
has_display() {
    [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]
}
