// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recognise.h"

#include "files/file_cursor.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace tessaro {

namespace {

struct Chunk {
    std::uint32_t offset = 0; ///< of the identifier
    std::uint32_t length = 0; ///< of the data behind identifier and length
};

/// Steps over the chunk that stands at the cursor if it has this identifier and lies within the file.
std::optional<Chunk> readChunk(FileCursor& in, const char* id)
{
    Chunk chunk;
    chunk.offset = in.pos();
    if (!in.readId(id) || !in.ReadLen(chunk.length) || !in.skip(chunk.length)) return std::nullopt;
    return chunk;
}

struct Header {
    std::uint16_t format = 0;
    std::uint16_t numTrk = 0;
    std::uint16_t division = 0;
};

/// Finds the header chunk, which may have anything in front of it, and leaves the cursor behind it.
std::optional<Header> readHeader(FileCursor& in)
{
    constexpr std::string_view id = "MThd";
    const std::uint8_t* first = in.bytes();
    const std::uint8_t* last = first + in.left();
    const std::uint8_t* found = std::search(first, last, id.begin(), id.end());
    if (last - found <= 4) return std::nullopt;
    in.moveTo(static_cast<std::uint32_t>(found - first) + 4);

    Header header;
    std::uint32_t length = 0;
    if (!in.ReadLen(length)) return std::nullopt;
    FileCursor fields = in;
    const bool whole = fields.readShort(header.format) && fields.readShort(header.numTrk)
                    && fields.readShort(header.division) && in.skip(length);
    if (!whole || header.division == 0) return std::nullopt;
    return header;
}

bool isFormat0(_EDT_FILE& file, const Header& header, FileCursor& in)
{
    if (header.format != 0 || header.numTrk != 1) return false;
    const auto track = readChunk(in, "MTrk");
    if (!track) return false;
    file.mtrkOffset = track->offset;
    file.mtrkLength = track->length;
    return true;
}

/// The cursor stands behind the track chunk of a format 0 file.
bool isZp(_EDT_FILE& file, FileCursor in)
{
    const auto info = readChunk(in, "ZPIH");
    const auto karaoke = info ? readChunk(in, "ZPKM") : std::nullopt;
    if (!karaoke) return false;
    file.zpihOffset = info->offset;
    file.zpihLength = info->length;
    file.zpkmOffset = karaoke->offset;
    file.zpkmLength = karaoke->length;
    return true;
}

bool isFormat1(_EDT_FILE& file, const Header& header, FileCursor in)
{
    if (header.format != 1 || header.numTrk == 0) return false;
    file.mtrkOffset = in.pos();
    for (int i = 0; i < header.numTrk; ++i)
        if (!readChunk(in, "MTrk")) return false;
    return true;
}

} // namespace

_EDT_FILE recogniseFile(std::uint8_t* buffer, std::uint32_t length)
{
    _EDT_FILE file;
    file.buffer = buffer;
    file.fileLength = length;
    FileCursor in(buffer, length);
    if (in.readId("TR9H")) return file; // a native song, which no reader takes yet
    const auto header = readHeader(in);
    if (!header) return file;
    file.numTrk = header->numTrk;
    file.division = header->division;
    FileCursor behind = in;
    if (isFormat0(file, *header, behind))
        file.kind = isZp(file, behind) ? filekind::zp : filekind::smf0;
    else if (isFormat1(file, *header, in))
        file.kind = filekind::smf1;
    return file;
}

} // namespace tessaro
