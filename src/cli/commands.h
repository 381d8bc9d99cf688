// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace tessaro::cli {

inline constexpr int exitSuccess = 0;
inline constexpr int exitFailure = 1; ///< a file failed; its reason is on standard error
inline constexpr int exitUsage = 2;

struct ConvertOptions {
    std::string file;
    std::string out;
    std::string kind; ///< a name of fileKindOf; empty where OUT's ending tells
};

struct SimulateOptions {
    std::string file;
    std::string from; ///< positions; empty where not given
    std::string to;
    std::vector<std::string> loop; ///< two positions, or empty
    bool noChase = false;
    std::string mute; ///< list of tracks
    int solo = 0;     ///< 0 for none
};

struct RenderOptions {
    std::string file;
    std::string out;
    unsigned rate = 48000;
    std::string soundFont;
    std::string from;
    std::string to;
};

struct PlayOptions {
    std::string file;
    std::string out;
    std::string in;
    std::string log;
    bool sync = false; ///< follows MIDI clock
    bool lead = false; ///< sends MIDI clock
};

struct RecordOptions {
    std::string out;
    std::string in; ///< drivers; empty for the first
    std::string playOut;
    std::string with;   ///< song that plays meanwhile; empty for none
    double tempo = 0;   ///< of a new song, in beats a minute; 0 for the usual one
    double seconds = 0; ///< 0 for no end
    bool sync = false;
};

// The commands: each prints or writes, and answers the program's exit code.
int runInfo(const std::string& file);
int runDump(const std::string& file);
int runConvert(const ConvertOptions& options);
int runSimulate(const SimulateOptions& options);
int runRender(const RenderOptions& options);
int runPlay(const PlayOptions& options);
int runRecord(const RecordOptions& options);
int runDevices();

} // namespace tessaro::cli
