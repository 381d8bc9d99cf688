// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "platform/audio/audio_out.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tessaro {

/// One way to an audio device, from the best to the one that always works.
struct AudioWay {
    std::string name;
    /// Null, and nothing left open, when the way does not lead anywhere.
    std::function<std::unique_ptr<AudioOut>(AudioSource&)> open;
    bool silent = false; ///< keeps time, but nothing is heard
};

/// Keeps an AudioSource playing through the best way that works. A way is in use once its frames are seen to
/// flow; when it fails to open, stands still for a second or loses its device, the next one is tried, and the
/// better ones are tried again every few seconds. One thread polls; see sentence() and flowing().
class AudioChain {
public:
    /// The source outlives the chain.
    AudioChain(std::vector<AudioWay> ways, AudioSource& source);
    ~AudioChain();
    AudioChain(const AudioChain&) = delete;
    AudioChain& operator=(const AudioChain&) = delete;

    /// Looks after the way in use; opens the first at the first call. `now` on any steady clock.
    void poll(Nanos now);
    /// Frames are seen to flow. Any thread.
    [[nodiscard]] bool flowing() const noexcept { return m_flowing.load(std::memory_order_acquire); }
    /// What is in use, in one sentence without a full stop. Any thread but a real-time one.
    [[nodiscard]] std::string sentence() const;

private:
    bool open(std::size_t way, Nanos now);
    void openFrom(std::size_t first, Nanos now);
    void watch(Nanos now);
    void tryBetter(Nanos now);
    void setSentence(std::string text);

    std::vector<AudioWay> m_ways;
    AudioSource& m_source;
    std::unique_ptr<AudioOut> m_out;
    std::size_t m_way = 0;
    std::uint64_t m_seenFrames = 0;
    Nanos m_lastMove {};
    Nanos m_nextTry {};
    std::atomic<bool> m_flowing {false};
    mutable std::mutex m_lock; ///< of the sentence
    std::string m_sentence;
};

} // namespace tessaro
