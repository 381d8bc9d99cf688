// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "platform/audio/audio_out.h"
#include "platform/audio/sound_status.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tessaro {

/// One way to an audio device.
struct AudioWay {
    std::string name; ///< as "JACK"; empty for the way that keeps time and plays nothing
    /// Starts the device. Null, and nothing left open, when the way leads nowhere.
    std::function<std::unique_ptr<AudioOut>()> open;
};

/// Keeps an AudioSource playing through the best way that works. A device is on trial, silent, until its frames
/// are seen to flow, at two polls; then it takes the source over. When the device in use is lost, the ways are
/// tried anew from the best, when it stands still, those behind it; better ones are tried again every few seconds.
/// One thread polls.
class AudioChain {
public:
    static constexpr Nanos patience =
        std::chrono::milliseconds(2500);                         ///< for frames to flow; some services fill up first
    static constexpr Nanos retryAfter = std::chrono::seconds(2); ///< pause before better ways are tried again

    /// Ways from the best to the last resort. The source outlives the chain.
    AudioChain(std::vector<AudioWay> ways, AudioSource& source);
    ~AudioChain();
    AudioChain(const AudioChain&) = delete;
    AudioChain& operator=(const AudioChain&) = delete;

    /// To be called every tenth of a second or so. `now` is the time on any steady clock.
    void poll(Nanos now);
    /// Frames of the source are seen to flow. Any thread.
    [[nodiscard]] bool flowing() const noexcept { return m_flowing.load(std::memory_order_acquire); }
    /// What is in use. Any thread but a real-time one.
    [[nodiscard]] SoundStatus status() const;

private:
    /// An open device, and when its frame count was last seen to grow.
    struct Device {
        std::unique_ptr<AudioOut> out;
        std::size_t way = 0;
        std::uint64_t frames = 0;
        int moves = 0; ///< polls that saw more frames
        Nanos lastMove{};
        Nanos windowStart{}; ///< of a second in which frames are counted
        std::uint64_t windowFrames = 0;
        bool races = false; ///< takes frames much faster than time runs, as some do when their server is gone

        void start(std::size_t asWay, Nanos now) noexcept;
        bool moved(Nanos now) noexcept;
        void checkPace(Nanos now) noexcept;
        [[nodiscard]] bool dead(Nanos now) const noexcept;
    };

    void checkPlaying(Nanos now);
    void checkTrial(Nanos now);
    void startTrial(Nanos now);
    void takeOver();
    void tell(SoundStatus status);

    const std::vector<AudioWay> m_ways;
    AudioSource& m_source;
    Device m_playing;
    Device m_trial;
    std::size_t m_candidate = 0; ///< the way to be tried next
    Nanos m_nextRound{};         ///< when to start again with the best way
    std::atomic<bool> m_flowing{false};
    mutable std::mutex m_lock; ///< of the status
    SoundStatus m_status{.state = SoundState::starting};
};

} // namespace tessaro
