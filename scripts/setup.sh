#!/usr/bin/env bash
# Installs what is missing to build and run Quillbay. Asks nothing; without anything missing it touches nothing.
#
#   scripts/setup.sh [--headless] [--tests] [--fuzz] [--list]
#
#   --headless  also what a picture needs on a machine without a display
#   --tests     also what the tests need
#   --fuzz      also what the fuzzers need
#   --list      only print the packages
#
# Environment: QUILLBAY_SKIP_SETUP=1 installs nothing, for systems whose packages have other names.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

readonly minimum_qt=6.4
readonly os_release=${QUILLBAY_OS_RELEASE:-/etc/os-release}
readonly log=$logs/setup.log

lists=(build run)
list_only=
for argument; do
    case $argument in
        --headless) lists+=(headless) ;;
        --tests) lists+=(headless test) ;;
        --fuzz) lists+=(fuzz) ;;
        --list) list_only=1 ;;
        *) fail "unknown option '$argument'; see the top of this file" ;;
    esac
done

is_supported() {
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null || return 1
    (
        # shellcheck disable=SC1090
        source "$os_release" 2>/dev/null
        [[ " ${ID:-} ${ID_LIKE:-} " == *" debian "* || " ${ID:-} ${ID_LIKE:-} " == *" ubuntu "* ]]
    )
}

# Those of the given packages that are not installed.
missing_packages() {
    local installed
    # shellcheck disable=SC2016 # dpkg-query's own variables
    installed=$(dpkg-query --show --showformat '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null |
        sed -n 's/^installed //p' | sort -u) || true
    comm -23 <(printf '%s\n' "$@" | sort -u) <(printf '%s\n' "$installed")
}

fonts_are_current() {
    [[ ! -e package-lock.json || node_modules/.package-lock.json -nt package-lock.json ]]
}

as_root() {
    if [[ $(id -u) == 0 ]]; then
        "$@"
    elif [[ -t 0 ]]; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

require_root() {
    [[ $(id -u) != 0 ]] || return 0
    command -v sudo >/dev/null ||
        fail "needs root to install, and there is no sudo; missing: $*"
    [[ -t 0 ]] || sudo -n true 2>/dev/null ||
        fail "sudo would ask for a password, and there is no terminal; missing: $*"
}

start_log() {
    mkdir -p "$logs"
    : >"$log"
}

# Ends the script because something could not be downloaded or installed; the log tells whether for want of a network.
fail_by_log() {
    local network='Failed to fetch|Unable to fetch|Could not resolve|ENOTFOUND|EAI_AGAIN|ETIMEDOUT|ECONNREFUSED|ENETUNREACH'
    ! grep -qE "$network" "$log" || fail "$1 (no network?); see $log"
    fail "$1; see $log"
}

# Lines "package version" of what apt could install of the given packages.
candidates() {
    LC_ALL=C apt-cache policy "$@" 2>>"$log" | awk '
        /^[^ ].*:$/ { name = substr($0, 1, length($0) - 1) }
        $1 == "Candidate:" && $2 != "(none)" { print name, $2 }'
}

install_packages() {
    local options=(-y -q -o DPkg::Lock::Timeout=300) reached=1 available absent qt
    require_root "$@"
    start_log
    printf 'Installing %d packages: %s\n' $# "$*"
    as_root env LC_ALL=C apt-get update "${options[@]}" -o APT::Update::Error-Mode=any </dev/null >>"$log" 2>&1 || reached=

    available=$(candidates "$@")
    absent=$(comm -23 <(printf '%s\n' "$@" | sort) <(cut -d' ' -f1 <<<"$available" | sort))
    absent=${absent//$'\n'/ }
    if [[ -n $absent ]]; then
        [[ -n $reached ]] || fail_by_log "the package archive cannot be read; missing: $absent"
        fail "this system's package archive does not have: $absent"
    fi
    qt=$(sed -n 's/^qt6-base-dev //p' <<<"$available")
    [[ -z $qt ]] || dpkg --compare-versions "$qt" ge "$minimum_qt" ||
        fail "this system offers Qt $qt; Quillbay needs Qt $minimum_qt (Debian 12 or later)"

    as_root env LC_ALL=C DEBIAN_FRONTEND=noninteractive apt-get install "${options[@]}" --no-install-recommends "$@" \
        </dev/null >>"$log" 2>&1 || fail_by_log 'apt-get could not install the packages'
}

install_fonts() {
    start_log
    echo 'Fetching the symbol fonts'
    npm ci --ignore-scripts --no-audit --no-fund </dev/null >>"$log" 2>&1 ||
        fail_by_log 'npm could not fetch the symbol fonts'
    # npm leaves an older tree as it is when nothing in it changed.
    touch node_modules/.package-lock.json
}

mapfile -t wanted < <(package_names "${lists[@]}")
if [[ -n $list_only ]]; then
    printf '%s\n' "${wanted[@]}"
    exit
fi

cd -- "$root"
if [[ -z ${QUILLBAY_SKIP_SETUP:-} ]]; then
    is_supported ||
        fail "only Debian 12, Ubuntu 24.04 and later are supported; elsewhere install the counterparts of: ${wanted[*]}"
    mapfile -t missing < <(missing_packages "${wanted[@]}")
    if ! fonts_are_current && ! command -v npm >/dev/null; then
        mapfile -t npm < <(package_names npm)
        mapfile -t -O "${#missing[@]}" missing < <(missing_packages "${npm[@]}")
    fi
    ((${#missing[@]} == 0)) || install_packages "${missing[@]}"
fi
fonts_are_current || install_fonts
