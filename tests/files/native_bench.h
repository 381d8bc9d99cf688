// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/edit/carried_score.h"
#include "core/edit/editor.h"
#include "core/fakes.h"
#include "files/smf_bytes.h"
#include "files/song_formats.h"

#include <string>
#include <vector>

namespace tessaro::test {

/// An editor that opens and saves song files held in memory, as a document does.
struct NativeBench {
    explicit NativeBench(std::string appDirectory = {}, ScoreLinks* links = nullptr);

    /// True when the song stands; its kind is in `kind`.
    bool load(const Bytes& file, bool wavesFollow = false);
    /// Empty when saving failed.
    Bytes save(std::uint8_t kind = 4);
    /// All that a native file keeps of the song, a line for each object, real blocks by their numbers.
    [[nodiscard]] std::vector<std::string> dump() const;

    CTrk& trk(int number) { return *editor.song().trk(number); }
    CRealBlk& master() { return *editor.song().masterReal(); }

    Strings strings{Language::japanese};
    SongFormats files;
    QuietPorts quiet;
    FakeUser user;
    FakeProgress progress;
    FakeDocument document;
    CarriedScore score;
    CEditor editor;
    std::uint8_t kind = 0;
    bool partial = false; ///< not all of the file found a track
};

/// The bytes of a track's chunk: settings with a type, port, channel and transposition, an empty name, and blocks.
struct TrkBytes {
    TrkBytes() { info({1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 7, 3, 100}); }
    TrkBytes& info(const Bytes& settings)
    {
        m_bytes = settings;
        m_bytes.resize(33);
        return *this;
    }
    TrkBytes& blk(std::uint32_t top, std::uint32_t end, std::uint32_t real, std::uint8_t type = 1,
                  const Bytes& name = {1, 'x'});
    [[nodiscard]] const Bytes& bytes() const { return m_bytes; }

private:
    Bytes m_bytes;
};

/// A native file of such events in its real blocks and such tracks.
SmfBytes nativeFile(const std::vector<Bytes>& reals, const std::vector<Bytes>& trks, std::uint32_t version = 4);
/// The same with 101 tracks and no styles: the master, the one track given, 99 without blocks.
SmfBytes fullFile(const std::vector<Bytes>& reals, const Bytes& trk);
/// A style track without blocks.
Bytes styleTrk(std::uint32_t count = 0, std::uint8_t version = 0);

} // namespace tessaro::test
