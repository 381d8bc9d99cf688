// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/loom/que_rec.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace tessaro {

class CEvnt;
class DirectSender;
class PlayOwners;
class Song;
class TrackTable;

/// Brings every sound module to the state that the song leaves it in at a tick: what of controllers, programs, bends,
/// pressures and system exclusives lies before it is sent at once, controllers and the like only with their last
/// values. A program change is a barrier: what stands before it goes out before it, since it may reset the part.
/// Owners of played messages are told. One object serves one chase. User interface thread, while nothing plays; it
/// takes its time, with the pauses that modules need.
class Chase {
public:
    /// Tracks whose port is not below `ports` are left out.
    Chase(DirectSender& sender, PlayOwners& owners, const TrackTable& tracks, unsigned ports);

    void run(const Song& song, std::uint32_t target);

private:
    static constexpr std::uint8_t none = 0x80;

    struct Item {
        std::int64_t time;
        const CEvnt* event;
        std::uint8_t port;
        std::uint8_t channel;
    };
    /// What is kept of a channel and not sent yet; `none` where there is nothing.
    struct Channel {
        Channel() noexcept { control.fill(none); }
        std::array<std::uint8_t, 128> control;
        std::array<std::uint8_t, 2> poly{none, none};
        std::array<std::uint8_t, 2> bend{none, none};
        std::uint8_t pressure = none;
        bool dirty = false; ///< controllers have come since they were last flushed
    };
    struct Place {
        std::uint8_t port;
        std::uint8_t channel;
        Channel& state;
    };

    [[nodiscard]] std::vector<Item> collect(const Song& song, std::uint32_t target) const;
    [[nodiscard]] Place placeOf(const Item& item);
    void take(const Item& item);
    void sysex(const Item& item);
    void control(const Place& place, std::uint8_t number, std::uint8_t value);
    void parameter(const Place& place, std::uint8_t msbControl, const CEvnt& event);
    void program(const Place& place, const CEvnt& event);

    void flushAll();
    void flush(const Place& place);
    void flushControls(const Place& place, std::span<const std::uint8_t> numbers);
    void send(const Place& place, std::uint8_t kind, std::uint8_t data1, std::uint8_t data2);
    void sendControl(const Place& place, std::uint8_t number, std::uint8_t value);
    void sendProgram(const Place& place, std::uint8_t number);

    DirectSender& m_sender;
    PlayOwners& m_owners;
    const TrackTable& m_tracks;
    unsigned m_ports;
    std::vector<Channel> m_channels; ///< 16 a port
};

} // namespace tessaro
