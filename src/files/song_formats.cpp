// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/song_formats.h"

#include "files/native/native_writer.h"
#include "files/recognise.h"
#include "files/smf/smf.h"
#include "files/smf_out/smf_writer.h"

namespace tessaro {

_EDT_FILE SongFormats::recognise(std::span<std::uint8_t> buffer, std::uint32_t length)
{
    return recogniseFile(buffer.data(), length);
}

LoadResult SongFormats::load(const _EDT_FILE& file, CEditor& editor)
{
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
    case filekind::native:
    case filekind::nativeWave: return NativeWriter(editor, m_strings, out).SaveTr9();
    default: return false;
    }
}

} // namespace tessaro
