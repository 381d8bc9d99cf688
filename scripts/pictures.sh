#!/usr/bin/env bash
# scripts/pictures.sh [folder]: pictures of every window, panel and dialog with the example song, light and dark, in
# English and Japanese, at scale 1 and 2, into docs/images/windows. Needs a release build (./run makes one).
set -euo pipefail

cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
program=${TESSARO:-build/release/bin/tessaro}
out=${1:-docs/images/windows}
song=examples/harbour-lights.mid
mkdir -p "$out"

declare -A windows=([track]=track [piano]=track,piano [drum]=track,drum [list]=list [master]=master
    [history]=track,history [edits]=edits [pages]=pages [setup]=setup [keys]=keys)
for name in "${!windows[@]}"; do
    for theme in light dark; do
        for lang in en ja; do
            for scale in 1 2; do
                QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=$scale QT_LOGGING_RULES='*.warning=false' \
                    "$program" --screenshot "$out/$name-$theme-$lang-$scale.png" --windows "${windows[$name]}" \
                    --theme "$theme" --lang "$lang" "$song" 2>/dev/null
            done
        done
    done
done
# Fewer colours make small files, where the tool for it is at hand.
if command -v mogrify >/dev/null; then mogrify -dither None -colors 255 -define png:compression-level=9 "$out"/*.png; fi
