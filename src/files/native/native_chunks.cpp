// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/native/native_chunks.h"

#include "base/bytes.h"
#include "core/model/trk.h"

#include <array>

namespace tessaro {

namespace {

constexpr std::uint64_t smallestFile = 18;
constexpr std::uint64_t blkCountAt = 12;
constexpr std::uint64_t styleCountAt = 10; ///< within the chunk of the style track

/// A cursor that goes from chunk to chunk.
class Walk {
public:
    explicit Walk(const ReadAt& read) : m_read(read) {}

    [[nodiscard]] std::uint64_t offset() const noexcept { return m_offset; }
    void seek(std::uint64_t offset) noexcept { m_offset = offset; }

    [[nodiscard]] std::optional<std::uint32_t> numberAt(std::uint64_t offset) const
    {
        std::array<std::uint8_t, 4> bytes{};
        if (!m_read(offset, bytes)) return std::nullopt;
        return ByteReader(bytes).u32be();
    }

    [[nodiscard]] bool isAt(std::string_view id) const
    {
        std::array<std::uint8_t, 4> bytes{};
        return m_read(m_offset, bytes) && ByteReader(bytes).chars(4) == id;
    }

    /// Goes behind the chunk, which may be beyond the file's end.
    bool step()
    {
        const auto length = numberAt(m_offset + 4);
        if (length) m_offset += native::chunkHead + *length;
        return length.has_value();
    }

    bool stepOver(std::string_view id, std::uint32_t count)
    {
        for (; count > 0; --count)
            if (!isAt(id) || !step()) return false;
        return true;
    }

private:
    const ReadAt& m_read;
    std::uint64_t m_offset = 0;
};

bool stepOverSong(Walk& walk)
{
    const auto blks = walk.numberAt(blkCountAt);
    if (!blks || !walk.isAt(chunkid::header)) return false;
    walk.seek(native::headerSize);
    if (!walk.stepOver(chunkid::realBlk, *blks) || !walk.stepOver(chunkid::trk, trackCount)) return false;
    const auto styles = walk.numberAt(walk.offset() + styleCountAt);
    return styles && walk.stepOver(chunkid::styleTrk, 1) && walk.stepOver(chunkid::styleBlk, *styles);
}

} // namespace

std::optional<FileSpan> findTrailingChunk(const ReadAt& read, std::uint64_t fileLength, std::string_view id)
{
    Walk walk(read);
    if (fileLength < smallestFile || !stepOverSong(walk)) return std::nullopt;
    while (!walk.isAt(id))
        if (!walk.step()) return std::nullopt;
    FileSpan found{.offset = walk.offset(), .length = 0};
    while (walk.step() && walk.offset() <= fileLength) found.length = walk.offset() - found.offset;
    return found;
}

} // namespace tessaro
