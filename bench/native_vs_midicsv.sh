#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Saves a song of 1,000,000 notes on 96 tracks as a native file, opens that file, and prints the same song as a MIDI file
# with midicsv, in turns in one run; tells the CPU time of each (best of the turns) and the ratios. The load is the
# whole process, the save what saving takes within one.
#   native_vs_midicsv.sh BUILD_FOLDER [TURNS]
# The build is a release build with TESSARO_BENCH on.
set -euo pipefail

build=${1:?usage: native_vs_midicsv.sh BUILD_FOLDER [TURNS]}
turns=${2:-7}
import=$build/bin/bench_import_file
native=$build/bin/bench_native_file
command -v midicsv >/dev/null || { echo "midicsv is not installed" >&2; exit 1; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
midi=$folder/large.mid song=$folder/large.TQM
"$import" --write "$midi" 1000000 96

# CPU seconds, user and system, of a command.
cpu() {
    local TIMEFORMAT='%U %S'
    { time "$@" >/dev/null; } 2>&1 | awk '{ print $1 + $2 }'
}

for ((i = 0; i < turns; i++)); do
    echo "$("$native" "$midi" "$song") $(cpu "$import" "$song") $(cpu midicsv "$midi")"
done | awk '
    NR == 1 || $1 < save { save = $1 }
    NR == 1 || $2 < load { load = $2 }
    NR == 1 || $3 < theirs { theirs = $3 }
    END { printf "save %.3f s, load %.3f s, midicsv %.3f s, ratios %.2f and %.2f\n",
                 save, load, theirs, save / theirs, load / theirs }'
