// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/byte_sink.h"
#include "base/file.h"
#include "base/strings.h"

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace tessaro {

class CBlk;
class CEditor;

/// The writer of the last chunk of a native song file: the sound files that the wave tracks name, each once. A file
/// that is not there makes an empty entry. A song that names none gets no chunk. The data goes through a small buffer.
/// A file that cannot be read, or is too large, is shown to the user. Main thread only.
class WaveSaver {
public:
    WaveSaver(CEditor& editor, const Strings& strings, ByteSink& sink)
        : m_editor(editor)
        , m_strings(strings)
        , m_sink(sink)
    {
    }

    /// False after a failure that was shown, and when the sink takes no more.
    bool SaveWave();

private:
    struct Entry {
        std::string name;
        std::uint32_t length = 0;
        bool exists = false;
    };

    bool collect();
    bool add(const std::string& name);
    bool SaveWave(const Entry& entry);
    bool copy(std::istream& in, const Entry& entry);
    bool fail(const std::string& name, FileError error);

    CEditor& m_editor;
    const Strings& m_strings;
    ByteSink& m_sink;
    std::vector<Entry> m_entries;
};

} // namespace tessaro
