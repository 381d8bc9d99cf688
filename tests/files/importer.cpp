// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/importer.h"

#include <algorithm>
#include <memory>

namespace tessaro::test {

Importer::Importer() : m_editor(ports()) {}

EditorPorts Importer::ports()
{
    return {*this, m_reader, *this, *this, m_quiet.transport, m_quiet.waveLengths, m_quiet.waveOutput, m_quiet.score};
}

PlainSong Importer::load(const Bytes& file)
{
    messages.clear();
    positions.clear();
    texts.clear();
    // Exactly as long as the file and its tail, so that the sanitizers see a read too far.
    const auto buffer = std::make_unique<std::uint8_t[]>(file.size() + 16);
    std::copy(file.begin(), file.end(), buffer.get());
    const auto length = static_cast<std::uint32_t>(file.size());
    const _EDT_FILE found = m_reader.recognise({buffer.get(), file.size() + 16}, length);

    PlainSong song;
    song.kind = found.kind;
    m_editor.SetPrgDlg();
    const LoadResult result = m_editor.Load(found);
    song.loaded = result != LoadResult::failed;
    song.partial = result == LoadResult::partial;
    song.complaints =
        static_cast<int>(std::count(messages.begin(), messages.end(), static_cast<int>(TextId::badEvent)));
    if (!song.loaded) {
        m_editor.InitEditor();
        return song;
    }
    m_editor.InitTimeInfo();
    m_editor.BlkSize(found.kind);
    m_editor.PackSysex();
    song.tracks = plainTracks(m_editor);
    return song;
}

} // namespace tessaro::test
