// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/song_formats.h"

#include "files/native/load_waves.h"
#include "files/native/native_chunks.h"
#include "files/native/native_reader.h"
#include "files/native/native_writer.h"
#include "files/native/save_waves.h"
#include "files/recognise.h"
#include "files/smf/smf.h"
#include "files/smf_out/smf_writer.h"

#include <filesystem>
#include <fstream>
#include <limits>
#include <new>

namespace tessaro {

namespace {

LoadResult loadNative(const _EDT_FILE& file, CEditor& editor, const Strings& strings)
{
    try {
        return NativeReader(editor, strings, file).LoadTr9() ? LoadResult::complete : LoadResult::failed;
    } catch (const std::bad_alloc&) {
        return LoadResult::failed;
    }
}

} // namespace

_EDT_FILE SongFormats::recognise(std::span<std::uint8_t> buffer, std::uint32_t length)
{
    return recogniseFile(buffer.data(), length);
}

std::uint64_t SongFormats::songLength(const std::string& path)
{
    constexpr std::uint64_t all = std::numeric_limits<std::uint64_t>::max();
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return all;
    const std::uint64_t length = std::filesystem::file_size(path, error);
    std::ifstream in(path, std::ios::binary);
    const ReadAt read = [&in](std::uint64_t offset, std::span<std::uint8_t> into) {
        in.clear();
        in.seekg(static_cast<std::streamoff>(offset));
        in.read(reinterpret_cast<char*>(into.data()), static_cast<std::streamsize>(into.size()));
        return in.good();
    };
    const auto waves = error ? std::nullopt : findTrailingChunk(read, length, chunkid::waves);
    return waves ? waves->offset : all;
}

bool SongFormats::loadWaves(const std::string& path, std::uint64_t offset, CEditor& editor)
{
    return WaveLoader(editor, m_strings, m_appDirectory).load(path, offset);
}

LoadResult SongFormats::load(const _EDT_FILE& file, CEditor& editor)
{
    if (file.kind == filekind::native) return loadNative(file, editor, m_strings);
    CSmf smf(editor, m_strings);
    if (!smf.Load(file)) return LoadResult::failed;
    return smf.isPartial() ? LoadResult::partial : LoadResult::complete;
}

bool SongFormats::save(std::uint8_t kind, CEditor& editor, ByteSink& out)
{
    NullScorePlayout score;
    switch (kind) {
    case filekind::smf0:
    case filekind::smf1:
    case filekind::zp:
    case filekind::vb: return saveSmf(kind, editor, m_strings, score, out);
    case filekind::native: return NativeWriter(editor, m_strings, out).SaveTr9();
    case filekind::nativeWave:
        return NativeWriter(editor, m_strings, out).SaveTr9() && WaveSaver(editor, m_strings, out).SaveWave();
    default: return false;
    }
}

} // namespace tessaro
