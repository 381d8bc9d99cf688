// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/strings.h"

#include <cstdint>
#include <fstream>
#include <string>

namespace tessaro {

class CEditor;

/// The reader of the last chunk of a native song file: it unpacks sound files into the folder "Temp" of a directory and
/// points the song's wave events at the copies, which the editor deletes with the song. Without a directory the chunk
/// is looked through, and the events keep their names. The data goes through a small buffer. A copy that cannot be
/// written is shown to the user. Main thread only.
class WaveLoader {
public:
    /// `directory` is empty for none.
    WaveLoader(CEditor& editor, const Strings& strings, std::string directory);

    /// The chunk at an offset of a file. False when it is broken or a copy fails.
    bool load(const std::string& path, std::uint64_t offset);

private:
    bool makeTemp();
    bool LoadWave();
    bool unpack(const std::string& name, std::uint32_t length);
    bool copy(std::FILE* target, std::uint32_t length);

    bool number(std::uint32_t& value);
    bool read(char* into, std::uint32_t count);

    CEditor& m_editor;
    const Strings& m_strings;
    std::string m_directory;
    std::string m_temp;
    std::ifstream m_in;
    std::uint64_t m_left = 0; ///< bytes of the file behind the cursor
};

} // namespace tessaro
