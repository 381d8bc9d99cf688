// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tessaro {

/// Writes a stereo WAV file of 16-bit samples. Samples come as floats, full scale -1 to 1; they are rounded to
/// the nearest step and clipped. Operations answer false on failure, and error() then holds a plain reason;
/// after a failure nothing more is written. One thread at a time.
class TESSARO_API WavWriter {
public:
    WavWriter();
    ~WavWriter(); ///< closes, without news of a failure
    WavWriter(const WavWriter&) = delete;
    WavWriter& operator=(const WavWriter&) = delete;

    /// Replaces a file of that name.
    bool open(const std::string& path, unsigned rate);
    /// Left and right in turn; an even number of samples.
    bool write(std::span<const float> interleaved);
    /// Completes the header and closes. False when the disk did not take all of it.
    bool close();

    [[nodiscard]] std::uint64_t frames() const noexcept;  ///< written so far
    [[nodiscard]] std::uint64_t clipped() const noexcept; ///< samples that did not fit
    [[nodiscard]] const std::string& error() const noexcept;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace tessaro
