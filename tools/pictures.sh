#!/bin/sh
# Makes the pictures of docs/pictures anew: tools/pictures.sh. Each script of tools/pictures runs headless on its
# drawing, named in its first line, in English or in the language that its second line names; those whose name ends
# in "-2x" run on a screen with twice the pixels.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/tools/setup.sh"

install_packages
build release korvex KvLayerManager KvLayerManagerRes
cd "$root/docs/pictures"
for script in "$root"/tools/pictures/*.scr; do
    drawing=$(sed -n '1s/^; drawing: //p' "$script")
    language=$(sed -n '2s/^; language: //p' "$script")
    scale=1
    case $script in *-2x.scr) scale=2 ;; esac
    profile=$(mktemp -d)
    KORVEX_PROFILE_DIR=$profile QT_SCALE_FACTOR=$scale LC_ALL=${language:-C} \
        "$root/build/release/host/korvex" "$root/$drawing" --headless --script "$script" >"$profile/out" 2>&1 ||
        { cat "$profile/out" >&2; fail "$script failed"; }
    rm -rf "$profile"
done
