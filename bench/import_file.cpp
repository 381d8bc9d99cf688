// SPDX-License-Identifier: GPL-3.0-or-later
// import_file FILE: opens a standard MIDI file and tells its notes, for measuring the whole process from outside.
// import_file --write FILE NOTES CHUNKS: makes a large file to open.
#include "large_song.h"
#include "song_loader.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

int write(const char* path, const char* notes, const char* chunks)
{
    const auto bytes = tessaro::bench::largeSong(static_cast<std::uint32_t>(std::strtoul(notes, nullptr, 10)),
                                                 static_cast<std::uint32_t>(std::strtoul(chunks, nullptr, 10)));
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return out.flush() ? 0 : 1;
}

int load(const char* path)
{
    std::error_code error;
    const auto length = std::filesystem::file_size(path, error);
    if (error) return 1;
    std::vector<std::uint8_t> buffer(length + 16);
    std::ifstream in(path, std::ios::binary);
    in.read(reinterpret_cast<char*>(buffer.data()), static_cast<std::streamsize>(length));
    tessaro::bench::SongLoader loader;
    if (!in || !loader.load(buffer)) return 1;
    std::printf("%u notes\n", loader.notes());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 5 && std::strcmp(argv[1], "--write") == 0) return write(argv[2], argv[3], argv[4]);
    if (argc == 2) return load(argv[1]);
    std::fputs("import_file FILE\nimport_file --write FILE NOTES CHUNKS\n", stderr);
    return 2;
}
