// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/synth/sound_font.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace tessaro {

namespace {

bool isSoundFont(const fs::path& file)
{
    std::error_code ignored;
    return (file.extension() == ".sf2" || file.extension() == ".sf3") && fs::is_regular_file(file, ignored);
}

std::vector<fs::path> soundFontsIn(const std::string& folder)
{
    std::vector<fs::path> found;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed))
        if (isSoundFont(entry->path())) found.push_back(entry->path());
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

std::vector<std::string> soundFontFolders()
{
    return {"/usr/share/sounds/sf2", "/usr/share/sounds/sf3", "/usr/share/soundfonts", "/usr/local/share/soundfonts"};
}

std::string findSoundFont(const std::vector<std::string>& folders)
{
    std::vector<fs::path> found;
    for (const std::string& folder : folders) {
        const std::vector<fs::path> here = soundFontsIn(folder);
        found.insert(found.end(), here.begin(), here.end());
    }
    for (const char* preferred : {"TimGM6mb.sf2", "default-GM.sf2", "default-GM.sf3"})
        for (const fs::path& file : found)
            if (file.filename() == preferred) return file.string();
    return found.empty() ? std::string() : found.front().string();
}

} // namespace tessaro
