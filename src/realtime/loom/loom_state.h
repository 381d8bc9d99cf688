// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>

namespace tessaro {

class MessageTarget;

/// The switches and counters of playing that both sides of the engine see. Each is an atomic of its own; `playing` is
/// stored last and read first, so that what was set before it is seen with it.
struct LoomState {
    std::atomic<bool> playing = false;
    std::atomic<bool> armed = false;    ///< MIDI Start may begin the run
    std::atomic<std::uint32_t> run = 0; ///< counts the runs
    std::atomic<bool> preCount = false;
    std::atomic<bool> locating = false;
    std::atomic<bool> realtimeOut = false; ///< Start, Stop, Continue, Song Position and clock go out
    std::atomic<int> syncMode = 0;

    std::atomic<std::uint32_t> position = 0; ///< song tick of the record played last, or located
    std::atomic<std::uint32_t> playEnd = 0;  ///< 0: none
    std::atomic<std::uint32_t> innerTime = 0;
    std::atomic<std::int64_t> ticksPlayed = -1;
    std::atomic<int> followedBeats = 0; ///< beats a minute of the incoming clock; 0: not known

    std::atomic<int> offset = 0;        ///< ms, as set last
    std::atomic<int> offsetToApply = 0; ///< ms

    // Kept for the application, which places the beat markers.
    std::atomic<std::uint32_t> beatLength = 480;
    std::atomic<std::uint32_t> barLength = 1920;
    std::atomic<std::uint32_t> tickInBar = 0;

    std::atomic<MessageTarget*> mainWindow = nullptr;
    std::atomic<MessageTarget*> playOwner = nullptr;
    std::atomic<MessageTarget*> recordOwner = nullptr; ///< told of errors by the record thread
};

} // namespace tessaro
