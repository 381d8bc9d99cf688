// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "platform/audio/block_time.h"
#include "platform/rt_slots.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace tessaro {

/// Makes the sound that an audio device plays.
class AudioSource {
public:
    virtual ~AudioSource();
    /// Gets ready for a device of this rate and period (frames); no device renders meanwhile. False when the
    /// rate will not do. May allocate.
    virtual bool prepare(unsigned rate, std::size_t period) = 0;
    /// Fills `frames` frames. `when` is the time of the first one on the engine's clock, smoothed: as far behind
    /// the moment it is heard as the device's buffers are long. The device's thread: no waiting.
    virtual void render(float* left, float* right, std::size_t frames, Nanos when) noexcept = 0;
};

/// What a device's callback pulls frames from: the attached source, or silence. It counts the frames, which tells
/// whether the device is alive. Callback and owner may hold it together, each as long as it likes.
class AudioTap {
public:
    /// The clock outlives the attachments.
    explicit AudioTap(const Clock& clock) : m_clock(clock) {}

    /// Owner. One source at a time.
    void attach(AudioSource& source, unsigned rate) noexcept;
    /// Owner. After the return the source is not called any more; silence goes on.
    void detach() noexcept;
    /// Device callback.
    void pull(float* left, float* right, std::size_t frames) noexcept;
    /// Any thread. The device is gone and will not call again.
    void fail() noexcept { m_failed.store(true, std::memory_order_release); }

    [[nodiscard]] bool failed() const noexcept { return m_failed.load(std::memory_order_acquire); }
    [[nodiscard]] std::uint64_t frames() const noexcept { return m_frames.load(std::memory_order_acquire); }

private:
    const Clock& m_clock;
    RtSlots<AudioSource, 1> m_source;
    AudioSource* m_attached = nullptr; ///< owner's
    std::atomic<unsigned> m_rate{0};
    std::atomic<std::uint64_t> m_frames{0};
    std::atomic<bool> m_failed{false};
    BlockTime m_time; ///< the callback's
};

/// A running audio device. It plays silence until its tap gets a source. Destroying it stops it, after the source
/// has been detached.
class AudioOut {
public:
    virtual ~AudioOut();
    AudioOut(const AudioOut&) = delete;
    AudioOut& operator=(const AudioOut&) = delete;

    [[nodiscard]] AudioTap& tap() noexcept { return *m_tap; }
    [[nodiscard]] unsigned rate() const noexcept { return m_rate; }
    [[nodiscard]] std::size_t period() const noexcept { return m_period; } ///< frames a callback

protected:
    AudioOut(std::shared_ptr<AudioTap> tap, unsigned rate, std::size_t period);
    [[nodiscard]] const std::shared_ptr<AudioTap>& sharedTap() const noexcept { return m_tap; }
    void setFormat(unsigned rate, std::size_t period) noexcept;

private:
    std::shared_ptr<AudioTap> m_tap;
    unsigned m_rate;
    std::size_t m_period;
};

} // namespace tessaro
