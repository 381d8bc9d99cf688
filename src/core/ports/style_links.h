// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <cstdint>

namespace tessaro {

/// What the song asks of its accompaniment styles: where they end, and the solo and mute of the style
/// channels, which work in parallel to those of the tracks. Main thread only.
class TESSARO_API StyleLinks {
public:
    virtual ~StyleLinks();
    /// Empties the list of style blocks and puts the style channels back to their defaults.
    virtual void clear() = 0;
    /// Absolute tick at which the last style block ends, 0 without one.
    [[nodiscard]] virtual std::uint32_t timeEnd() const = 0;
    [[nodiscard]] virtual bool isSoloExist() const = 0;
    /// Takes the solo from all style channels.
    virtual void clearSolo() = 0;
    /// Hands the switch of every style channel to the engine where it differs.
    virtual void setOnOff() = 0;
    /// Solo of the style channels on this port and channel; with `on` all others lose theirs. True when a
    /// flag changed.
    virtual bool setChSolo(std::uint8_t port, std::uint8_t channel, bool on) = 0;
    /// Mute of the style channels on this port and channel. True when a flag changed.
    virtual bool setChMute(std::uint8_t port, std::uint8_t channel, bool on) = 0;
};

/// A song without styles.
class TESSARO_API NullStyleLinks final : public StyleLinks {
public:
    void clear() override {}
    std::uint32_t timeEnd() const override { return 0; }
    bool isSoloExist() const override { return false; }
    void clearSolo() override {}
    void setOnOff() override {}
    bool setChSolo(std::uint8_t, std::uint8_t, bool) override { return false; }
    bool setChMute(std::uint8_t, std::uint8_t, bool) override { return false; }
};

} // namespace tessaro
