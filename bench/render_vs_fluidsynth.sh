#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Renders a song to a WAV file with tessaro-cli and with FluidSynth's own file renderer, same font, rate, gain, reverb and
# chorus, in turns in one run; tells the CPU time of both (best of the turns) and the ratio.
#   render_vs_fluidsynth.sh BUILD_FOLDER [SONG [TURNS]]
# The build is a release build.
set -euo pipefail

build=${1:?usage: render_vs_fluidsynth.sh BUILD_FOLDER [SONG [TURNS]]}
song=${2:-$(dirname "$0")/../examples/harbour-lights.mid}
turns=${3:-5}
font=/usr/share/sounds/sf2/TimGM6mb.sf2
command -v fluidsynth >/dev/null || { echo "fluidsynth is not installed" >&2; exit 1; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# CPU seconds, user and system, of a command.
cpu() {
    local TIMEFORMAT='%U %S'
    { time "$@" >/dev/null 2>&1; } 2>&1 | awk '{ print $1 + $2 }'
}

for ((i = 0; i < turns; i++)); do
    ours=$(cpu "$build/bin/tessaro-cli" render "$song" "$folder/ours.wav" --rate 48000 --soundfont "$font")
    theirs=$(cpu fluidsynth -q -ni -g 0.4 -R 1 -C 1 -r 48000 -T wav -O s16 -F "$folder/theirs.wav" "$font" "$song")
    echo "$ours $theirs"
done | awk '
    NR == 1 || $1 < ours { ours = $1 }
    NR == 1 || $2 < theirs { theirs = $2 }
    END { printf "render %.2f s, fluidsynth %.2f s, ratio %.2f\n", ours, theirs, ours / theirs }'
