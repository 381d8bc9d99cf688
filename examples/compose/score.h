// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro::compose {

inline constexpr std::uint32_t quarter = 480;
inline constexpr std::uint32_t eighth = quarter / 2;

/// One part of a song being composed: a channel and its events. Times are ticks from the song's start.
/// Notes are given a player's small unevenness, the same in every run.
class Part {
public:
    Part(std::string name, std::uint8_t channel, std::uint8_t program, std::uint8_t volume, std::uint8_t pan,
         std::uint8_t reverb);

    void note(std::uint32_t time, int key, std::uint32_t gate, int velocity);
    void control(std::uint32_t time, std::uint8_t controller, int value);
    /// -1 to 1 of the bend range.
    void bend(std::uint32_t time, double amount);
    /// A controller that moves evenly from one value to another.
    void ramp(std::uint32_t from, std::uint32_t to, std::uint8_t controller, int first, int last);
    /// A line in notation: "D5:3 E5:1 -:4", note names or "-" for a rest, lengths in eighths. Returns its end.
    std::uint32_t line(std::uint32_t time, std::string_view notation, int velocity, double legato = 0.92);

    [[nodiscard]] std::vector<std::uint8_t> chunk(std::uint32_t end) const;

private:
    struct Message {
        std::uint32_t time;
        int rank; ///< order at equal times: offs, controllers, ons
        std::vector<std::uint8_t> bytes;
    };
    int unevenness(int range);
    void add(std::uint32_t time, int rank, std::vector<std::uint8_t> bytes);

    std::string m_name;
    std::uint8_t m_channel;
    std::uint32_t m_seed;
    std::vector<Message> m_messages;
};

/// The tempo, the signatures and the texts of a song.
class Conductor {
public:
    explicit Conductor(std::string title) : m_title(std::move(title)) {}
    void tempo(std::uint32_t time, double beatsPerMinute);
    void signature(std::uint32_t time, std::uint8_t numerator, std::uint8_t denominatorPower);
    void key(std::uint32_t time, std::int8_t sharps, bool minor);
    void marker(std::uint32_t time, std::string_view text);
    [[nodiscard]] std::vector<std::uint8_t> chunk(std::uint32_t end) const;

private:
    struct Meta {
        std::uint32_t time;
        std::uint8_t type;
        std::vector<std::uint8_t> body;
    };
    std::string m_title;
    std::vector<Meta> m_metas;
};

/// The number of a note name such as "C4" (60), "F#3" or "Bb5".
[[nodiscard]] int keyOf(std::string_view name);

/// A format 1 file of these chunks.
[[nodiscard]] std::vector<std::uint8_t> midiFile(const std::vector<std::vector<std::uint8_t>>& chunks);

} // namespace tessaro::compose
