#!/usr/bin/env bash
# What the engine adds to a bare loop of sleeps: the lateness of each message that `play` logs, beside that of the loop
# run just before it. Usage: bench/dispatch.sh [song] [driver]; needs the release build with -DTESSARO_BENCH=ON.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=build/release/bin
song=${1:-examples/harbour-lights.mid}
driver=${2:-Loopback}
log=$(mktemp)
trap 'rm -f "$log"' EXIT

"$bin/bench_sleep_loop" --benchmark_format=csv 2>/dev/null | tail -n 1 | awk -F, '{
    printf "sleep loop   p50 %8.1f us   p99 %8.1f us   max %8.1f us   (real-time priority: %s)\n", $12, $13, $11, $14 }'
timeout --signal=INT 60 "$bin/tessaro-cli" play "$song" --out "$driver" --log "$log" || true
awk '$3 != "-" { print $2 - $1 }' "$log" | sort -n | awk '{ late[NR] = $1 } END {
    printf "messages     p50 %8.1f us   p99 %8.1f us   max %8.1f us   (%d messages)\n",
           late[int((NR + 1) / 2)], late[int(NR * 0.99)], late[NR], NR }'
