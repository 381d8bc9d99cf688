// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace tessaro {

/// Statuses of queue records below and beside the channel messages 0x80 to 0xEF.
namespace que {
inline constexpr std::uint8_t null = 0x00;         ///< carries its delta only
inline constexpr std::uint8_t wave = 0x40;         ///< is timed, sends nothing
inline constexpr std::uint8_t mci = 0x50;          ///< `data` is a zero-terminated command for the main window
inline constexpr std::uint8_t tempo = 0x51;        ///< the tempo is track * 65536 + length
inline constexpr std::uint8_t signature = 0x58;    ///< sends nothing
inline constexpr std::uint8_t sysex = 0xF0;        ///< `data` starts behind the 0xF0
inline constexpr std::uint8_t songPosition = 0xF2; ///< of the record's `time`
inline constexpr std::uint8_t continuation = 0xF7; ///< a later slice of a system exclusive
inline constexpr std::uint8_t continuePlay = 0xFB;
inline constexpr std::uint8_t stopPlay = 0xFC;
inline constexpr std::uint8_t beat = 0xFD; ///< data1: 0 bar start, 1 other; data2: 1 on, 0 off
inline constexpr std::uint8_t meta = 0xFF; ///< sends nothing
} // namespace que

/// Track numbers that the engine knows: 0 master, 1 to 100 the song's, 101 to 116 the style parts.
inline constexpr int loomTracks = 117;
inline constexpr int loomPorts = 128;

#pragma pack(push, 4)

/// A record of the play queue: what falls due, and how many ticks behind the record before it. The
/// queue copies the record; `data` is borrowed and stays valid until the record has been played.
struct _LOOM_QUE_REC {
    std::int32_t delta = 0; ///< ticks behind the record queued before
    std::uint32_t time = 0; ///< song tick
    std::uint8_t kind = 1;
    std::uint8_t reserved1[3] = {};
    std::uint32_t reserved2 = 0;
    std::int16_t track = 0; ///< 0 to 116; tempo record: high byte of the tempo
    std::uint8_t port = 0;  ///< output port
    std::uint8_t reserved3 = 0;
    std::uint32_t length = 3; ///< 3, or bytes of `data`; tempo record: low 16 bits of the tempo
    std::uint8_t status = que::null;
    std::uint8_t data1 = 0;
    union {
        std::uint8_t data2;
        std::uint16_t length16 = 0;
    };
    const void* data = nullptr;
};

/// An entry of the record ring or of the back-message ring.
struct LoomRingEntry {
    std::uint32_t size = 0;  ///< bytes at `data` when status is 0xF7
    std::uint32_t time = 0;  ///< record ring: song tick of arrival; back-message ring: output port
    std::uint8_t status = 0; ///< as received or sent; 0xF0 and 0xF7 have `data`
    std::uint8_t data1 = 0;
    union {
        std::uint8_t data2;
        std::uint16_t length = 0; ///< bytes at `data` when status is 0xF0, with 0xF0 and 0xF7
    };
    const std::uint8_t* data = nullptr; ///< valid until the entry is freed
};

#pragma pack(pop)

/// Entries of either ring; the indices run from 0 to this less 1.
inline constexpr std::uint16_t loomRingEntries = 600;

static_assert(offsetof(_LOOM_QUE_REC, delta) == 0);
static_assert(offsetof(_LOOM_QUE_REC, time) == 4);
static_assert(offsetof(_LOOM_QUE_REC, kind) == 8);
static_assert(offsetof(_LOOM_QUE_REC, reserved2) == 12);
static_assert(offsetof(_LOOM_QUE_REC, track) == 16);
static_assert(offsetof(_LOOM_QUE_REC, port) == 18);
static_assert(offsetof(_LOOM_QUE_REC, length) == 20);
static_assert(offsetof(_LOOM_QUE_REC, status) == 24);
static_assert(offsetof(_LOOM_QUE_REC, data1) == 25);
static_assert(offsetof(_LOOM_QUE_REC, data2) == 26);
static_assert(offsetof(_LOOM_QUE_REC, length16) == 26);
static_assert(offsetof(_LOOM_QUE_REC, data) == 28);
static_assert(sizeof(_LOOM_QUE_REC) == 28 + sizeof(void*));

static_assert(offsetof(LoomRingEntry, size) == 0);
static_assert(offsetof(LoomRingEntry, time) == 4);
static_assert(offsetof(LoomRingEntry, status) == 8);
static_assert(offsetof(LoomRingEntry, data1) == 9);
static_assert(offsetof(LoomRingEntry, data2) == 10);
static_assert(offsetof(LoomRingEntry, length) == 10);
static_assert(offsetof(LoomRingEntry, data) == 12);
static_assert(sizeof(LoomRingEntry) == 12 + sizeof(void*));

} // namespace tessaro
