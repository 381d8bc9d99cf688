// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/native_bench.h"

namespace tessaro::test {

/// Loads files and gives what they became in plain data.
struct Importer final : NativeBench {
    PlainSong load(const Bytes& file);
};

} // namespace tessaro::test
