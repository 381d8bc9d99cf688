// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

// The value records by which the song travels between the model, the views, undo and the files. Their
// names are part of the program's vocabulary; this is the one header that declares reserved-looking names.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)

namespace tessaro {

/// One event by value. `data` is borrowed: it lives as long as the event it came from keeps its payload.
/// Times are ticks; inside a block they count from the block's top.
struct _EDT_EVNT {
    std::uint8_t status = 0;
    std::uint8_t post1 = 0;
    std::uint8_t post2 = 0;
    std::uint8_t post3 = 0;
    std::uint8_t post4 = 0;
    std::uint8_t metaType = 0;
    std::uint32_t time = 0;
    std::uint32_t gateTime = 0;
    std::uint32_t szData = 0;
    const std::uint8_t* data = nullptr;
    std::string mciCommand;
    std::string fileName;
};

/// The settings of one track by value.
struct _EDT_TRKINFO {
    std::uint8_t type = 0;
    std::uint8_t port = 0;
    std::uint8_t ch = 0;
    std::int8_t trans = 0;
    bool solo = false;
    bool mute = false;
    bool rec = false;
    bool transEnable = true;
    std::string name;
};

/// One measure of the measure map: ticks, and the four bytes of its time signature.
struct _EDT_MEASINFO {
    std::uint32_t top = 0;
    std::uint32_t measClock = 1920;
    std::uint32_t beatClock = 480;
    std::uint8_t num = 4;
    std::uint8_t den = 2; ///< power of two
    std::uint8_t clocks = 24;
    std::uint8_t notes32 = 8;
};

/// One node of the tempo map: tick, milliseconds from the song's start, microseconds a quarter note.
struct _EDT_TIMEINFO {
    std::uint32_t time = 0;
    std::uint32_t msec = 0;
    std::uint32_t tempo = 500000;
};

/// A place as people read it. `TimeToMeas` counts measure and beat from 1, `MeasToTime` from 0.
struct _EDT_MEAS {
    std::uint32_t meas = 0;
    std::uint32_t beat = 0;
    std::uint32_t tick = 0;
};

/// What a load hands around. The document owns the buffer, which is `fileLength` bytes long plus a tail
/// of 16 zero bytes; a load may change its bytes. Offsets are those of chunk identifiers.
struct _EDT_FILE {
    std::uint8_t kind = 0;
    std::uint16_t numTrk = 0;
    std::uint32_t numRealBlk = 0;
    std::uint16_t division = 480;
    std::uint32_t mtrkOffset = 0;
    std::uint32_t mtrkLength = 0;
    std::uint32_t zpihOffset = 0;
    std::uint32_t zpihLength = 0;
    std::uint32_t zpkmOffset = 0;
    std::uint32_t zpkmLength = 0;
    std::uint32_t trkOffset = 0;
    std::uint32_t blkOffset = 0;
    std::uint32_t fileLength = 0;
    std::uint8_t* buffer = nullptr;
    bool wavesFollow = false; ///< the file on disk goes on with waves
};

/// How the notes of a style's phrase bend to follow a chord. Flags are 1 where the phrase plays.
struct _STYLE_CTAB {
    std::uint8_t track = 0; ///< channel of the data in the style file, 0 to 15
    std::array<char, 8> name{};
    std::uint8_t part = 0;                    ///< output channel, 0 to 15
    std::uint8_t kept = 0;                    ///< carried for others
    std::array<std::uint8_t, 12> noteMute{};  ///< by the chord's root
    std::array<std::uint8_t, 35> chordMute{}; ///< by the chord's type
    std::uint8_t srcRoot = 0;                 ///< pitch class
    std::uint8_t srcChord = 0;
    std::uint8_t noteRule = 0;
    std::uint8_t noteTable = 0;
    std::uint8_t highKey = 0; ///< pitch class
    std::uint8_t noteLow = 0;
    std::uint8_t noteHigh = 0;
    std::uint8_t retrigRule = 0;
    std::uint8_t extMode = 0;
    std::uint16_t extLength = 0;                                     ///< sixths of a quarter note
    std::array<std::uint8_t, 4> extNote{0x80, 0x80, 0x80, 0x80};     ///< 0x80 is unused
    std::array<std::uint8_t, 4> extVelocity{0x80, 0x80, 0x80, 0x80}; ///< 0x80 is unused
};

/// The settings of the style track and its 16 parts by value.
struct _STYLE_TRK_INFO {
    std::array<std::uint8_t, 16> port{};
    std::array<std::uint8_t, 16> ch{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    std::int8_t transOfst = 0;           ///< semitones, for all parts
    std::array<std::int8_t, 16> trans{}; ///< semitones, -36 to +36
    std::array<bool, 16> transEnable{true, true, true, true, true, true, true, true,
                                     true, true, true, true, true, true, true, true};
    std::array<bool, 16> solo{};
    std::array<bool, 16> mute{};
    bool styleBSetup = true;
    bool styleBTempo = false;
    std::string styleName;
};

/// A cursor into a standard MIDI stream that stands behind an event's status byte.
struct _EDT_SMF {
    const std::uint8_t* buffer = nullptr;
    std::uint32_t length = 0; ///< bytes in the buffer
    std::uint32_t pos = 0;    ///< read index
    std::uint32_t time = 0;   ///< absolute time in song ticks
    std::uint8_t status = 0;  ///< status of the event being read
};

} // namespace tessaro

// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)
