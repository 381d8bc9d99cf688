#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# What the engine adds to a bare loop of sleeps: the lateness of each message that `play` logs, beside that of such a
# loop run just before it.
#   dispatch.sh BUILD_FOLDER [SONG [DRIVER]]
# The build is a release build with TESSARO_BENCH on.
set -euo pipefail

build=${1:?usage: dispatch.sh BUILD_FOLDER [SONG [DRIVER]]}
song=${2:-$(dirname "$0")/../examples/harbour-lights.mid}
driver=${3:-Loopback}
log=$(mktemp)
trap 'rm -f "$log"' EXIT

"$build/bin/bench_sleep_loop" --benchmark_format=json 2>/dev/null | awk -F'[:,]' '
    /"p50_us"/ { p50 = $2 } /"p99_us"/ { p99 = $2 } /"max_us"/ { max = $2 } /"realtime"/ { realtime = $2 }
    END { printf "sleep loop   p50 %8.1f us   p99 %8.1f us   max %8.1f us   (real-time priority: %s)\n",
                 p50, p99, max, (realtime > 0 ? "yes" : "no") }'
timeout --signal=INT 60 "$build/bin/tessaro-cli" play "$song" --out "$driver" --log "$log" || true
awk '$3 != "-" { print $2 - $1 }' "$log" | sort -n | awk '
    { late[NR] = $1 }
    END { printf "messages     p50 %8.1f us   p99 %8.1f us   max %8.1f us   (%d messages)\n",
                 late[int((NR + 1) / 2)], late[int(NR * 0.99)], late[NR], NR }'
