#!/bin/sh
# Runs a program in a root folder made of the machine's own and of what FILES has, for itself alone. A file that the machine
# has as well is the one of FILES.
#   in_made_root.sh FILES EMPTY-FOLDER PROGRAM [ARGUMENT...]
# Environment: MADE_READ_ONLY, a folder in which nothing can be changed meanwhile.
set -e
if [ -z "$IN_MADE_ROOT" ]; then
    IN_MADE_ROOT=1 exec unshare --mount --map-root-user "$0" "$@"
fi
unset IN_MADE_ROOT
files=$1 root=$2
shift 2
mount -t tmpfs made "$root"
cp -R "$files/." "$root"
for entry in /*; do
    if [ -L "$entry" ]; then
        cp -P "$entry" "$root$entry"
    elif [ -d "$entry" ]; then
        mkdir -p "$root$entry"
        mount --rbind "$entry" "$root$entry"
    fi
done
find "$files" -type f | while read -r file; do
    place=${file#"$files"}
    [ ! -f "$place" ] || mount --bind "$file" "$root$place"
done
if [ -n "$MADE_READ_ONLY" ]; then
    mount --bind "$root$MADE_READ_ONLY" "$root$MADE_READ_ONLY"
    mount -o remount,bind,ro "$root$MADE_READ_ONLY"
fi
exec chroot "$root" "$@"
