#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Another client plays a random stream for some time, it is recorded while a song plays, and the take is played back; once
# over the loopback and once over a JACK server of its own. Prints how far recorded times are from those of sending.
#   record_stream.sh BUILD_FOLDER [SECONDS [SEED]]
# The build has the tests.
set -euo pipefail

build=${1:?usage: record_stream.sh BUILD_FOLDER [SECONDS [SEED]]}
TESSARO_STREAM_SECONDS=${2:-300} TESSARO_STREAM_SEED=${3:-7} exec "$build/bin/test_streams" --gtest_filter='Streams.*'
