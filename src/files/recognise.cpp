// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recognise.h"

#include "base/bytes.h"
#include "core/model/trk.h"
#include "files/native/native_chunks.h"

#include <optional>
#include <string_view>

namespace tessaro {

namespace {

struct Chunk {
    std::uint32_t offset = 0; ///< of the identifier
    std::uint32_t length = 0; ///< of the data behind identifier and length
};

/// Steps over the chunk that stands at the cursor if it has this identifier and lies within the file.
std::optional<Chunk> readChunk(ByteReader& in, std::string_view id)
{
    Chunk chunk;
    chunk.offset = static_cast<std::uint32_t>(in.position());
    if (in.chars(4) != id) return std::nullopt;
    chunk.length = in.u32be();
    in.skip(chunk.length);
    if (!in.ok()) return std::nullopt;
    return chunk;
}

struct Header {
    std::uint16_t format = 0;
    std::uint16_t numTrk = 0;
    std::uint16_t division = 0;
};

/// Finds the header chunk, which may have anything in front of it, and leaves the cursor behind it.
std::optional<Header> readHeader(ByteReader& in)
{
    constexpr std::string_view id = "MThd";
    const std::string_view file = ByteReader(in).chars(in.left());
    const std::size_t found = file.find(id);
    if (found == std::string_view::npos) return std::nullopt;
    in.seek(found + id.size());
    const std::uint32_t length = in.u32be();
    ByteReader fields = in;
    const Header header{fields.u16be(), fields.u16be(), fields.u16be()};
    in.skip(length);
    if (!in.ok() || !fields.ok() || header.division == 0) return std::nullopt;
    return header;
}

bool isFormat0(_EDT_FILE& file, const Header& header, ByteReader& in)
{
    if (header.format != 0 || header.numTrk != 1) return false;
    const auto track = readChunk(in, "MTrk");
    if (!track) return false;
    file.mtrkOffset = track->offset;
    file.mtrkLength = track->length;
    return true;
}

/// The cursor stands behind the track chunk of a format 0 file.
bool isZp(_EDT_FILE& file, ByteReader in)
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

bool isFormat1(_EDT_FILE& file, const Header& header, ByteReader in)
{
    if (header.format != 1 || header.numTrk == 0) return false;
    file.mtrkOffset = static_cast<std::uint32_t>(in.position());
    for (int i = 0; i < header.numTrk; ++i)
        if (!readChunk(in, "MTrk")) return false;
    return true;
}

/// Nothing behind the tracks is looked at.
bool isNative(_EDT_FILE& file, ByteReader in)
{
    if (in.chars(4) != chunkid::header) return false;
    in.skip(4);
    const std::uint8_t version = in.u8();
    in.skip(1);
    file.numTrk = in.u16be();
    file.numRealBlk = in.u32be();
    file.division = in.u16be();
    if (version > native::lastVersion || file.numTrk > trackCount) return false;
    in.seek(native::headerSize);
    file.blkOffset = static_cast<std::uint32_t>(in.position());
    for (std::uint32_t i = 0; i < file.numRealBlk; ++i)
        if (!readChunk(in, chunkid::realBlk)) return false;
    file.trkOffset = static_cast<std::uint32_t>(in.position());
    for (int i = 0; i < file.numTrk; ++i)
        if (!readChunk(in, chunkid::trk)) return false;
    return in.ok();
}

} // namespace

_EDT_FILE recogniseFile(std::uint8_t* buffer, std::uint32_t length)
{
    _EDT_FILE file;
    file.buffer = buffer;
    file.fileLength = length;
    ByteReader in({buffer, length});
    if (_EDT_FILE song = file; isNative(song, in)) {
        song.kind = filekind::native;
        return song;
    }
    const auto header = readHeader(in);
    if (!header) return file;
    file.numTrk = header->numTrk;
    file.division = header->division;
    ByteReader behind = in;
    if (isFormat0(file, *header, behind))
        file.kind = isZp(file, behind) ? filekind::zp : filekind::smf0;
    else if (isFormat1(file, *header, in))
        file.kind = filekind::smf1;
    return file;
}

} // namespace tessaro
