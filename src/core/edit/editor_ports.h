// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"
#include "core/ports/document.h"
#include "core/ports/progress.h"
#include "core/ports/score_links.h"
#include "core/ports/song_files.h"
#include "core/ports/transport.h"
#include "core/ports/user.h"
#include "core/ports/wave_lengths.h"
#include "core/ports/wave_output.h"

namespace tessaro {

/// All that a song editor asks of its surroundings. Every port outlives the editor.
struct EditorPorts {
    DocumentPort& document;
    SongFiles& files;
    UserPort& user;
    ProgressPort& progress;
    Transport& transport;
    WaveLengths& waveLengths;
    WaveOutput& waveOutput;
    ScoreLinks& score;
    const Strings* strings = nullptr; ///< null leaves progress without words
};

/// A null object for each port that has one; whoever builds an editor replaces those that matter.
struct QuietPorts {
    NullUser user;
    NullProgress progress;
    NullTransport transport;
    NullWaveLengths waveLengths;
    NullWaveOutput waveOutput;
    NullScoreLinks score;

    [[nodiscard]] EditorPorts with(DocumentPort& document, SongFiles& files)
    {
        return {document, files, user, progress, transport, waveLengths, waveOutput, score};
    }
};

} // namespace tessaro
