// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/messages.h"

#include <cstdint>

namespace tessaro {

class CCnpWindow;
class MciPlayer;
class Smc;

/// What the main frame does about real-time news: start, stop and position from outside, the end of the song, media
/// commands, all sound off. The loop of the command uses the same table. Main thread.
class TESSARO_API RealtimeMessages {
public:
    RealtimeMessages(Smc& smc, CCnpWindow& panel, MciPlayer& media) : m_smc(smc), m_panel(panel), m_media(media) {}

    /// False for a message of another kind.
    bool handle(const Message& message);

    /// The message by which the panel lets a song go on after a change of location.
    [[nodiscard]] static Message resume() noexcept { return {msg::realtime, continuePlay, ownRequest}; }

    /// Codes of message 0x433.
    static constexpr std::uint64_t stop = 2;
    static constexpr std::uint64_t start = 3;
    static constexpr std::uint64_t continuePlay = 4;
    static constexpr std::uint64_t songEnd = 5;
    static constexpr std::uint64_t songPosition = 6;

private:
    static constexpr std::intptr_t ownRequest = -1;

    void internalSync(const Message& message);
    void midiSync(const Message& message);
    void reapplyLoop();

    Smc& m_smc;
    CCnpWindow& m_panel;
    MciPlayer& m_media;
};

} // namespace tessaro
