// SPDX-License-Identifier: GPL-3.0-or-later
// native_file IN OUT: opens a song file, saves it as a native one, and tells the CPU seconds that the save took,
// writing included.
#include "files/recognise.h"
#include "song_loader.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>

namespace {

struct FileSink final : tessaro::ByteSink {
    explicit FileSink(const char* path) : out(path, std::ios::binary) {}
    bool write(std::span<const std::uint8_t> bytes) override
    {
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return out.good();
    }
    std::ofstream out;
};

} // namespace

int main(int argc, char** argv)
{
    std::error_code error;
    const auto length = argc == 3 ? std::filesystem::file_size(argv[1], error) : 0;
    if (argc != 3 || error) {
        std::fputs("native_file IN OUT\n", stderr);
        return 2;
    }
    std::vector<std::uint8_t> buffer(length + 16);
    std::ifstream in(argv[1], std::ios::binary);
    in.read(reinterpret_cast<char*>(buffer.data()), static_cast<std::streamsize>(length));
    tessaro::bench::SongLoader loader;
    if (!in || !loader.load(buffer)) return 1;

    const std::clock_t start = std::clock();
    FileSink sink(argv[2]);
    if (!loader.save(tessaro::filekind::native, sink) || !sink.out.flush()) return 1;
    std::printf("%.6f\n", static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    return 0;
}
