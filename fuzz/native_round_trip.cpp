// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes that open as a native song file, saved and opened again: the second save, and every one after it, is equal
// to the one before. The first may have to leave out what the file cannot hold.
#include "native_song.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using tessaro::fuzz::demand;
    tessaro::fuzz::NativeSong song;
    if (!song.load({data, size})) return 0;
    const auto first = song.save();
    demand(song.save() == first); // which saving does not change
    demand(song.load(first));
    const auto second = song.save();
    demand(song.load(second));
    demand(song.save() == second);
    return 0;
}
