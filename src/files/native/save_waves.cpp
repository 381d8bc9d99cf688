// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/native/save_waves.h"

#include "base/bytes.h"
#include "base/text.h"
#include "core/edit/editor.h"
#include "files/native/native_chunks.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <limits>
#include <set>

namespace tessaro {

namespace {

constexpr std::uint64_t longest = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t chunkFields = 6;
constexpr std::uint32_t entryFields = 8;

struct LessWave {
    bool operator()(std::string_view a, std::string_view b) const noexcept { return compareWaves(a, b) < 0; }
};

/// The names in order of their first use. A block is read up to the first event of another kind.
std::vector<std::string> waveNames(const Song& song)
{
    std::vector<std::string> names;
    std::set<std::string_view, LessWave> known;
    for (const CTrk* trk = song.trk(1); trk; trk = List<CTrk>::next(trk)) {
        if (trk->GetType() != trktype::wave) continue;
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) {
            if (blk->GetType() != blktype::real || !blk->GetRealBlk()) continue;
            const CEvnt* e = blk->GetRealBlk()->events().head();
            for (; e && status::kind(e->GetStatus()) == status::wave; e = List<CEvnt>::next(e))
                if (known.insert(e->GetFileName()).second) names.push_back(e->GetFileName());
        }
    }
    return names;
}

} // namespace

bool WaveSaver::SaveWave()
{
    if (!collect()) return false;
    if (m_entries.empty()) return true;
    std::uint64_t length = chunkFields;
    for (const Entry& entry : m_entries) length += entryFields + entry.name.size() + entry.length;
    if (length > longest) return fail(m_entries.back().name, FileError::tooLarge);

    std::vector<std::uint8_t> head;
    ByteWriter out(head);
    out.chars(chunkid::waves);
    out.u32be(static_cast<std::uint32_t>(length));
    out.u8(native::wavesVersion);
    out.u8(0);
    out.u32be(static_cast<std::uint32_t>(m_entries.size()));
    if (!m_sink.write(head)) return false;
    return std::all_of(m_entries.begin(), m_entries.end(), [this](const Entry& entry) { return SaveWave(entry); });
}

bool WaveSaver::collect()
{
    const std::vector<std::string> names = waveNames(m_editor.song());
    return std::all_of(names.begin(), names.end(), [this](const std::string& name) { return add(name); });
}

bool WaveSaver::add(const std::string& name)
{
    Entry entry{.name = name, .length = 0, .exists = false};
    std::error_code error;
    const bool isPath = name.find('\0') == std::string::npos;
    if (isPath && std::filesystem::is_regular_file(name, error)) {
        const std::uint64_t size = std::filesystem::file_size(name, error);
        if (error) return fail(name, FileError::failed);
        if (size > longest) return fail(name, FileError::tooLarge);
        entry.exists = true;
        entry.length = static_cast<std::uint32_t>(size);
    }
    m_entries.push_back(std::move(entry));
    return true;
}

bool WaveSaver::SaveWave(const Entry& entry)
{
    std::vector<std::uint8_t> head;
    ByteWriter out(head);
    out.u32be(static_cast<std::uint32_t>(entry.name.size()));
    out.chars(entry.name);
    out.u32be(entry.length);
    if (!m_sink.write(head)) return false;
    if (!entry.exists) return true;
    std::ifstream in(entry.name, std::ios::binary);
    return in ? copy(in, entry) : fail(entry.name, FileError::noPermission);
}

/// As many bytes as the entry was said to have; a file that has become shorter meanwhile fails.
bool WaveSaver::copy(std::istream& in, const Entry& entry)
{
    m_editor.SetPrgDlgText(m_strings(TextId::progressSaveWave));
    m_editor.SetPrgDlgRange(0, entry.length / native::wavePiece);
    std::array<std::uint8_t, native::wavePiece> buffer;
    for (std::uint32_t piece = 0, left = entry.length; left > 0; ++piece) {
        m_editor.SetPrgDlgPos(piece);
        const std::uint32_t count = std::min<std::uint32_t>(left, native::wavePiece);
        if (!in.read(reinterpret_cast<char*>(buffer.data()), count)) return fail(entry.name, FileError::failed);
        if (!m_sink.write(std::span(buffer).first(count))) return false;
        left -= count;
    }
    return true;
}

bool WaveSaver::fail(const std::string& name, FileError error)
{
    m_editor.user().sentence(toUtf8(name) + ": " + std::string(m_strings(textOf(error))), MessageKind::error);
    return false;
}

} // namespace tessaro
