#!/usr/bin/env bash
# Pictures of every screen and state, light and dark, in a large window and in the smallest one. The home is made for
# them; the applications and their icons are those that the machine has.
#
#   scripts/gallery.sh [STATE...]      into build/gallery; without STATE all are made
#
# Environment: QUILLBAY_GALLERY_SCHEMES (light dark), QUILLBAY_GALLERY_SIZES (1440x900 900x600).
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

"$root/scripts/setup.sh" --tests
"$root/scripts/build.sh" release quillbay
for scheme in ${QUILLBAY_GALLERY_SCHEMES:-light dark}; do
    for size in ${QUILLBAY_GALLERY_SIZES:-1440x900 900x600}; do
        PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 "$root/tests/e2e/gallery.py" \
            "$root/build/release/bin/quillbay" "$root/build/gallery" "$scheme" "$size" "$@"
    done
done
echo "The pictures are in build/gallery"
