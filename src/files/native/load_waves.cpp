// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/native/load_waves.h"

#include "base/bytes.h"
#include "base/file.h"
#include "base/text.h"
#include "core/edit/editor.h"
#include "files/native/native_chunks.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace tessaro {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t headSize = 14;
constexpr std::size_t longestStem = 200; ///< leaves room for a number and the ending in a file name
constexpr std::string_view folderName = "Temp";

struct Close {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

/// The name alone, without folders, ending and what no file name may hold. Folders may be told as either system does.
std::string stemOf(const std::string& name)
{
    std::string stem = toUtf8(name);
    stem.erase(0, stem.find_last_of("/\\") + 1);
    stem.resize(std::min(stem.size(), stem.rfind('.')));
    for (char& c : stem)
        if (static_cast<unsigned char>(c) < 0x20) c = '_';
    if (stem.size() > longestStem) {
        std::size_t end = longestStem;
        while (end > 0 && (stem[end] & 0xC0) == 0x80) --end; // not inside a character
        stem.resize(end);
    }
    return stem.empty() ? "wave" : stem;
}

struct NewFile {
    std::string path;
    File file;
};

/// A file of a name that nothing has yet; no file when the system refuses.
NewFile create(const std::string& folder, const std::string& stem)
{
    NewFile made{folder + '/' + stem + ".wav", nullptr};
    for (int count = 1;; ++count) {
        made.file.reset(std::fopen(made.path.c_str(), "wbxe"));
        if (made.file || errno != EEXIST) return made;
        made.path = folder + '/' + stem + '_' + std::to_string(count) + ".wav";
    }
}

} // namespace

WaveLoader::WaveLoader(CEditor& editor, const Strings& strings, std::string directory)
    : m_editor(editor)
    , m_strings(strings)
    , m_directory(std::move(directory))
{
}

bool WaveLoader::load(const std::string& path, std::uint64_t offset)
{
    std::error_code error;
    const std::uint64_t length = fs::file_size(path, error);
    if (error || offset >= length || !makeTemp()) return false;
    m_left = length - offset;
    m_in.open(path, std::ios::binary);
    m_in.seekg(static_cast<std::streamoff>(offset));

    std::array<std::uint8_t, headSize> head{};
    if (!read(reinterpret_cast<char*>(head.data()), headSize)) return false;
    ByteReader fields(head);
    if (fields.chars(4) != chunkid::waves) return false;
    fields.skip(4);
    if (fields.u8() != native::wavesVersion) return false;
    fields.skip(1);
    for (std::uint32_t count = fields.u32be(); count > 0 && m_left > 0; --count)
        if (!LoadWave()) return false;
    return true;
}

bool WaveLoader::makeTemp()
{
    if (m_directory.empty()) return true;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(m_directory, error))
        if (compareWaves(entry.path().filename().string(), folderName) == 0 && entry.is_directory(error))
            m_temp = entry.path().string();
    if (!m_temp.empty()) return true;
    m_temp = (fs::path(m_directory) / folderName).string();
    return fs::create_directory(m_temp, error);
}

bool WaveLoader::LoadWave()
{
    std::uint32_t size = 0;
    if (!number(size) || size > native::longestData || size > m_left) return false;
    std::string name(size, '\0');
    std::uint32_t length = 0;
    if (!read(name.data(), size) || !number(length) || length > m_left) return false;
    if (length > 0 && !m_temp.empty()) return unpack(name, length);
    m_in.seekg(length, std::ios::cur);
    m_left -= length;
    return m_in.good();
}

bool WaveLoader::unpack(const std::string& name, std::uint32_t length)
{
    NewFile target = create(m_temp, stemOf(name));
    if (target.file) m_editor.AddTempWaveList(target.path);
    if (target.file && copy(target.file.get(), length) && std::fclose(target.file.release()) == 0) {
        m_editor.ChngWaveFileName(name, target.path);
        return true;
    }
    const FileError error = errno == ENOSPC ? FileError::diskFull : FileError::failed;
    m_editor.user().sentence(toUtf8(target.path) + ": " + std::string(m_strings(textOf(error))), MessageKind::error);
    return false;
}

bool WaveLoader::copy(std::FILE* target, std::uint32_t length)
{
    m_editor.SetPrgDlgText(m_strings(TextId::progressLoadWave));
    m_editor.SetPrgDlgRange(0, length / native::wavePiece);
    std::array<char, native::wavePiece> buffer;
    for (std::uint32_t piece = 0; length > 0; ++piece) {
        m_editor.SetPrgDlgPos(piece);
        const std::uint32_t count = std::min<std::uint32_t>(length, native::wavePiece);
        if (!read(buffer.data(), count) || std::fwrite(buffer.data(), 1, count, target) != count) return false;
        length -= count;
    }
    return true;
}

bool WaveLoader::number(std::uint32_t& value)
{
    std::array<std::uint8_t, 4> bytes{};
    if (!read(reinterpret_cast<char*>(bytes.data()), bytes.size())) return false;
    value = ByteReader(bytes).u32be();
    return true;
}

bool WaveLoader::read(char* into, std::uint32_t count)
{
    if (count > m_left || !m_in.read(into, count)) return false;
    m_left -= count;
    return true;
}

} // namespace tessaro
