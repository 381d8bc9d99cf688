// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/play/play_bench.h"
#include "support/random.h"

#include <cstdint>

namespace tessaro::test {

/// Fills the song of a bench, unbound as yet: several tracks on few channels, overlapping blocks and ghosts, events of
/// all kinds with many at equal times, notes without gate and across each other, tempos and signatures. Roughly
/// `length` ticks.
template <class Bench>
void makeRandomSong(Bench& bench, Dice& dice, std::uint32_t length)
{
    CEditor& editor = bench.editor;
    const auto posts = [&dice] {
        return std::vector<std::uint8_t>{dice.byteBelow(128), dice.byteBelow(128), dice.byteBelow(128),
                                         dice.byteBelow(128)};
    };
    const auto fill = [&](CBlk& blk, std::uint32_t span, bool master) {
        for (std::uint32_t n = dice.between(5, 80); n > 0; --n) {
            const std::uint32_t time = dice.oneIn(3) ? dice.below(span / 120 + 1) * 120 : dice.below(span);
            const std::uint32_t gate = dice.oneIn(6) ? 0 : dice.below(dice.oneIn(8) ? length : 700);
            const std::uint8_t key = static_cast<std::uint8_t>(dice.between(58, 66));
            const std::uint8_t control[] = {0, 1, 6, 7, 32, 38, 64, 98, 99, 100, 101, 121};
            switch (master ? 6 + dice.below(3) : dice.below(16)) {
            case 0: bench.add(blk, 0x10, time, posts()); break;
            case 1: bench.add(blk, 0x20, time, posts()); break;
            case 2: bench.add(blk, 0x30, time, posts()); break;
            case 3: bench.add(blk, 0xA0, time, {key, dice.byteBelow(128)}); break;
            case 4: bench.add(blk, 0xC0, time, posts()); break;
            case 5: bench.add(blk, 0xD0, time, posts()); break;
            case 6: bench.add(blk, 0xE0, time, posts()); break;
            case 7: bench.addBytes(blk, 0xF0, time, {0x7E, dice.byteBelow(128), 9, 1, 0xF7}); break;
            case 8: bench.addBytes(blk, 0xFF, time, {1, 2, 3}, 0x01); break;
            case 9:
            case 10: bench.add(blk, 0xB0, time, {control[dice.below(std::size(control))], dice.byteBelow(128)}); break;
            default: bench.add(blk, 0x90, time, {key, static_cast<std::uint8_t>(dice.between(1, 127))}, gate); break;
            }
        }
    };

    for (std::uint32_t n = dice.below(6); n > 0; --n) {
        const std::uint32_t tempo = dice.between(200000, 1500000);
        const std::uint8_t data[] = {static_cast<std::uint8_t>(tempo >> 16U), static_cast<std::uint8_t>(tempo >> 8U),
                                     static_cast<std::uint8_t>(tempo)};
        editor.AddTempo(dice.below(length), data);
        const std::uint8_t signature[] = {static_cast<std::uint8_t>(dice.between(1, 7)),
                                          static_cast<std::uint8_t>(dice.between(1, 4)), 24, 8};
        editor.AddTs(dice.below(length / 480) * 480, signature);
    }
    fill(*editor.song().masterBlk(), length, true);
    for (int track = 1; track <= 6; ++track) {
        CTrk& trk = *editor.song().trk(track);
        trk.SetPort(dice.byteBelow(2));
        trk.SetCh(dice.byteBelow(3));
        trk.SetTranspose(static_cast<int>(dice.below(13)) - 6);
        trk.SetTransEnable(!dice.oneIn(3));
        for (std::uint32_t n = dice.below(4); n > 0; --n) {
            CBlk& blk = bench.block(track, dice.below(length / 2));
            fill(blk, length / 2, false);
            if (dice.oneIn(3)) trk.NewAdd(dice.below(length), blk.GetRealBlk(), blktype::ghost);
        }
    }
}

} // namespace tessaro::test
