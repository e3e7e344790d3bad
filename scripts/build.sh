#!/usr/bin/env bash
# Builds Quillbay with one of the presets of CMakePresets.json; the program is build/PRESET/bin/quillbay.
#
#   scripts/build.sh [PRESET [TARGET...]]      PRESET is release unless given; without TARGET everything is built
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

preset=${1:-release}
targets=("${@:2}")
folder=$root/build/$preset

"$root/scripts/setup.sh"
cd -- "$root"
if [[ ! -e $folder/build.ninja || CMakePresets.json -nt $folder/CMakeCache.txt ]]; then
    cmake --preset "$preset"
fi
cmake --build "$folder" ${targets[0]+--target "${targets[@]}"}
