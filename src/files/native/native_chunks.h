// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace tessaro {

/// The chunks of a native song file: four bytes of identifier, four of length, most significant byte first, then as
/// many bytes. They stand in the order given here; the score has more of its own behind its first.
namespace chunkid {
inline constexpr std::string_view header = "TR9H";
inline constexpr std::string_view realBlk = "TR9B";
inline constexpr std::string_view trk = "TR9T";
inline constexpr std::string_view styleTrk = "T9ST";
inline constexpr std::string_view styleBlk = "T9SB";
inline constexpr std::string_view score = "SCRS";
inline constexpr std::string_view waves = "TR9V";
} // namespace chunkid

/// Sizes and versions of what has a fixed form.
namespace native {
inline constexpr std::size_t chunkHead = 8;
inline constexpr std::size_t headerSize = 72; ///< whatever the header's own length says
inline constexpr std::uint8_t version = 4;    ///< first with instrument, staff and wave volume of a track
inline constexpr std::uint8_t lastVersion = 15;
inline constexpr std::uint16_t division = 480;
inline constexpr std::size_t headerReserve = 54;
inline constexpr std::size_t trkReserve = 19;
inline constexpr std::size_t blkReserve = 18;
inline constexpr std::size_t styleReserve = 32;
inline constexpr std::uint32_t longestData = 0x0FFF'FFFF; ///< that a variable-length quantity can tell
inline constexpr std::uint8_t wavesVersion = 1;
inline constexpr std::uint32_t wavePiece = 8192; ///< of sound data held at a time
} // namespace native

/// Reads bytes at an offset of a file, all or none.
using ReadAt = std::function<bool(std::uint64_t offset, std::span<std::uint8_t> into)>;

/// A stretch of a file.
struct FileSpan {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
};

/// Walks the chunks of a native song file of so many bytes to the one of this identifier behind the styles. The span
/// goes from there to the end of the last chunk that lies whole within the file. None when any chunk on the way is not
/// the one that should stand there, which includes a file with fewer than 101 tracks or without a style track.
[[nodiscard]] std::optional<FileSpan> findTrailingChunk(const ReadAt& read, std::uint64_t fileLength,
                                                        std::string_view id);

} // namespace tessaro
