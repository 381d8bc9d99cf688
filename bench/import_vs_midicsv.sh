#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Opens a file of 1,000,000 notes on 96 chunks into the full song, and prints the same file with midicsv, in turns in
# one run; tells the CPU time of both (best of the turns) and the ratio.
#   import_vs_midicsv.sh BUILD_FOLDER [TURNS]
# The build is a release build with TESSARO_BENCH on.
set -euo pipefail

build=${1:?usage: import_vs_midicsv.sh BUILD_FOLDER [TURNS]}
turns=${2:-7}
import=$build/bin/bench_import_file
command -v midicsv >/dev/null || { echo "midicsv is not installed" >&2; exit 1; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
song=$folder/large.mid
"$import" --write "$song" 1000000 96

# CPU seconds, user and system, of a command.
cpu() {
    local TIMEFORMAT='%U %S'
    { time "$@" >/dev/null; } 2>&1 | awk '{ print $1 + $2 }'
}

for ((i = 0; i < turns; i++)); do
    echo "$(cpu "$import" "$song") $(cpu midicsv "$song")"
done | awk '
    NR == 1 || $1 < ours { ours = $1 }
    NR == 1 || $2 < theirs { theirs = $2 }
    END { printf "import %.3f s, midicsv %.3f s, ratio %.2f\n", ours, theirs, ours / theirs }'
