// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/importer.h"

#include <algorithm>

namespace tessaro::test {

PlainSong Importer::load(const Bytes& file)
{
    user.messages.clear();
    progress = {};
    editor.SetPrgDlg();
    PlainSong song;
    song.loaded = NativeBench::load(file);
    song.kind = kind;
    song.partial = partial;
    song.complaints = static_cast<int>(std::ranges::count(user.messages, static_cast<int>(TextId::badEvent)));
    if (song.loaded) song.tracks = plainTracks(editor);
    return song;
}

} // namespace tessaro::test
