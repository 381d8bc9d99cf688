// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessaro {

class CEvnt;
class DirectSender;
class Song;
class TrackTable;

/// The sample dumps of a song in time order, which playing leaves out. User interface thread, while the song stands
/// still; borrows the song.
class SampleSysex {
public:
    SampleSysex(const Song& song, const TrackTable& tracks);

    [[nodiscard]] bool empty() const noexcept { return m_dumps.empty(); }
    /// What goes over the line.
    [[nodiscard]] std::size_t byteCount() const noexcept;
    /// Sends them all and waits for each.
    void send(DirectSender& sender) const;

private:
    struct Dump {
        std::int64_t time;
        const CEvnt* event;
        std::uint8_t port;
    };
    std::vector<Dump> m_dumps;
};

} // namespace tessaro
