#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Opens a format 0 file of 1,000,000 notes and saves it as format 0, and sends the same file through
# `midicsv | csvmidi`, in turns in one run; tells the CPU time of both (best of the turns) and the ratio.
#   round_trip_vs_midicsv.sh BUILD_FOLDER [TURNS]
# The build is a release build with TESSARO_BENCH on.
set -euo pipefail

build=${1:?usage: round_trip_vs_midicsv.sh BUILD_FOLDER [TURNS]}
turns=${2:-7}
export_file=$build/bin/bench_export_file
command -v midicsv >/dev/null || { echo "midicsv is not installed" >&2; exit 1; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
song=$folder/large.mid
"$export_file" --write "$song" 1000000

ours() { "$export_file" "$song" "$folder/ours.mid"; }
theirs() { midicsv "$song" | csvmidi >"$folder/theirs.mid"; }

# CPU seconds, user and system, of a command.
cpu() {
    local TIMEFORMAT='%U %S'
    { time "$@"; } 2>&1 | awk '{ print $1 + $2 }'
}

for ((i = 0; i < turns; i++)); do
    echo "$(cpu ours) $(cpu theirs)"
done | awk '
    NR == 1 || $1 < ours { ours = $1 }
    NR == 1 || $2 < theirs { theirs = $2 }
    END { printf "load and save %.3f s, midicsv | csvmidi %.3f s, ratio %.2f\n", ours, theirs, ours / theirs }'
