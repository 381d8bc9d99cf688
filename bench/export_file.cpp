// SPDX-License-Identifier: GPL-3.0-or-later
// export_file IN OUT: opens a standard MIDI file and saves it as format 0, for measuring the whole process from
// outside. export_file --write FILE NOTES: makes a large file of format 0.
#include "large_song.h"
#include "song_loader.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

bool read(const char* path, std::vector<std::uint8_t>& buffer)
{
    std::error_code error;
    const auto length = std::filesystem::file_size(path, error);
    if (error) return false;
    buffer.resize(length + 16);
    std::ifstream in(path, std::ios::binary);
    in.read(reinterpret_cast<char*>(buffer.data()), static_cast<std::streamsize>(length));
    return static_cast<bool>(in);
}

bool convert(std::vector<std::uint8_t>& song, const char* path)
{
    tessaro::bench::SongLoader loader;
    std::vector<std::uint8_t> file;
    tessaro::VectorSink sink(file);
    if (!loader.load(song) || !loader.save(1, sink)) return false;
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
    return static_cast<bool>(out.flush());
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::uint8_t> song;
    if (argc == 4 && std::strcmp(argv[1], "--write") == 0) {
        song = tessaro::bench::largeSong(static_cast<std::uint32_t>(std::strtoul(argv[3], nullptr, 10)), 96);
        song.resize(song.size() + 16);
        return convert(song, argv[2]) ? 0 : 1;
    }
    if (argc == 3) return read(argv[1], song) && convert(song, argv[2]) ? 0 : 1;
    std::fputs("export_file IN OUT\nexport_file --write FILE NOTES\n", stderr);
    return 2;
}
