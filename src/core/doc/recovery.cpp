// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/recovery.h"

#include "base/file.h"
#include "base/profile.h"
#include "base/text.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>

namespace tessaro {

namespace fs = std::filesystem;

namespace {

constexpr const char* section = "Song";
constexpr std::string_view sumMark = "; ";
constexpr std::size_t sumDigits = 16;
constexpr std::uint64_t largestRecord = 1U << 20U;
constexpr const char* recordExtension = ".ini";
constexpr const char* takeExtension = ".take";
constexpr std::string_view temporaryStem = ".tessaro-";

/// The last line of a record: a sum over the lines before it.
std::string sumLine(std::string_view text)
{
    std::uint64_t sum = 0xCBF29CE484222325U;
    for (const char c : text) sum = (sum ^ static_cast<std::uint8_t>(c)) * 0x100000001B3U;
    std::array<char, sumDigits + 1> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(sum));
    return std::string(sumMark) + digits.data() + '\n';
}

std::span<const std::uint8_t> bytesOf(const std::string& text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string stringAt(const Profile& profile, const std::string& key)
{
    const std::vector<std::uint8_t> bytes = profile.bytes(section, key);
    return {bytes.begin(), bytes.end()};
}

std::uint64_t numberAt(const Profile& profile, const std::string& key)
{
    return std::strtoull(profile.string(section, key).c_str(), nullptr, 10);
}

/// What the name of a copy, or of a file that belongs to it, tells.
struct CopyName {
    explicit CopyName(const fs::path& file)
    {
        const fs::path stem = file.stem();
        song = stem.stem().string();
        owner = song.substr(0, song.rfind('-'));
        if (stem.has_extension()) takes = std::strtoul(stem.extension().c_str() + 1, nullptr, 10);
    }
    std::string owner; ///< the program that left it: its process id, a dash, and when it started
    std::string song;  ///< the owner and the number of the song
    unsigned long takes = 0;
};

std::string ownerOf(const fs::path& file) { return CopyName(file).owner; }

std::chrono::system_clock::time_point timeOf(const struct stat& status)
{
    using namespace std::chrono;
    return system_clock::time_point(
        duration_cast<system_clock::duration>(seconds(status.st_mtim.tv_sec) + nanoseconds(status.st_mtim.tv_nsec)));
}

/// Whether a text begins with the number of a process that runs no more.
bool namesDeadProcess(const char* text)
{
    const long pid = std::strtol(text, nullptr, 10);
    return pid > 0 && ::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH;
}

/// A file that a program was about to write when it ended.
bool isLeftover(const fs::path& file)
{
    const std::string name = file.filename().string();
    return name.starts_with(temporaryStem) && namesDeadProcess(name.c_str() + temporaryStem.size());
}

/// A record or a journal whose copy is gone.
bool isAlone(const fs::path& file)
{
    std::error_code error;
    return !fs::exists(fs::path(file).replace_extension(copyExtension), error) && !error;
}

std::vector<fs::path> filesIn(const std::string& folder)
{
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        files.push_back(at->path());
    return files;
}

std::optional<RecoverableSong> songOf(const fs::path& copy)
{
    struct stat status {};
    if (::stat(copy.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    RecoverableSong song;
    song.copy = copy.string();
    song.bytes = static_cast<std::uint64_t>(status.st_size);
    const FileContents text = readFile(recordPathOf(song.copy), largestRecord);
    song.hasRecord = song.record.decode({text.bytes.begin(), text.bytes.end()});
    if (!song.hasRecord) song.record.time = timeOf(status);
    const std::string take = takePathOf(song.copy);
    if (::stat(take.c_str(), &status) == 0 && status.st_size > 0) song.take = take;
    return song;
}

std::string besides(const std::string& copy, const char* extension)
{
    return copy.substr(0, copy.rfind('.')) + extension;
}

} // namespace

std::string recordPathOf(const std::string& copy) { return besides(copy, recordExtension); }

std::string takePathOf(const std::string& copy) { return besides(copy, takeExtension); }

std::string SongRecord::encode() const
{
    using namespace std::chrono;
    Profile profile;
    profile.setBytes(section, "Path", bytesOf(path));
    profile.setBytes(section, "Title", bytesOf(title));
    profile.set(section, "Kind", kind);
    profile.set(section, "Time",
                std::to_string(duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count()));
    profile.set(section, "Ticks", std::to_string(ticks));
    profile.set(section, "Milliseconds", std::to_string(milliseconds));
    const std::string text = profile.toText();
    return text + sumLine(text);
}

bool SongRecord::decode(const std::string& text)
{
    const std::size_t sumLength = sumMark.size() + sumDigits + 1;
    if (text.size() < sumLength) return false;
    const std::string body = text.substr(0, text.size() - sumLength);
    if (!text.ends_with(sumLine(body))) return false;
    Profile profile;
    profile.parse(body);
    path = stringAt(profile, "Path");
    title = stringAt(profile, "Title");
    kind = static_cast<std::uint8_t>(profile.integer(section, "Kind"));
    time = std::chrono::system_clock::time_point(std::chrono::milliseconds(numberAt(profile, "Time")));
    ticks = static_cast<std::uint32_t>(numberAt(profile, "Ticks"));
    milliseconds = static_cast<std::uint32_t>(numberAt(profile, "Milliseconds"));
    return true;
}

std::string RecoverableSong::name() const
{
    return toUtf8(record.path.empty() ? record.title : fs::path(record.path).filename().string());
}

RecoveryList::RecoveryList(std::string folder) : m_folder(std::move(folder))
{
    for (const fs::path& file : filesIn(m_folder)) tidy(file);
    for (const fs::path& file : filesIn(m_folder)) {
        if (file.extension() != copyExtension || !claim(ownerOf(file))) continue;
        if (auto song = songOf(file)) m_songs.push_back(std::move(*song));
    }
    std::stable_sort(m_songs.begin(), m_songs.end(),
                     [](const auto& a, const auto& b) { return a.record.time > b.record.time; });
}

RecoveryList::~RecoveryList()
{
    const std::vector<fs::path> files = filesIn(m_folder);
    for (const Claim& claim : m_claims) {
        const bool left = std::any_of(files.begin(), files.end(), [&](const fs::path& file) {
            return file.extension() == copyExtension && ownerOf(file) == claim.owner;
        });
        if (!left && claim.lock >= 0) ::unlink(lockPathOf(m_folder, claim.owner).c_str());
        if (claim.lock >= 0) ::close(claim.lock);
    }
}

/// Deletes what programs that are gone left half done.
void RecoveryList::tidy(const std::filesystem::path& file)
{
    std::error_code error;
    const fs::path kind = file.extension();
    if (isLeftover(file)) fs::remove(file, error);
    if (kind == ".lock") claim(file.stem().string());
    if (kind == copyExtension && claim(ownerOf(file))) removeEarlierCopies(file.string());
    if (kind == recordExtension && isAlone(file) && claim(ownerOf(file))) fs::remove(file, error);
    // A journal may stand a moment before its copy and the lock do.
    if (kind == takeExtension && isAlone(file) && namesDeadProcess(file.filename().c_str())) fs::remove(file, error);
}

/// Whether the program of this name is gone. Its lock is then ours, so that no other list has its copies.
bool RecoveryList::claim(const std::string& owner)
{
    const auto known = std::find_if(m_claims.begin(), m_claims.end(), [&](const Claim& c) { return c.owner == owner; });
    if (known != m_claims.end()) return known->gone;
    Claim claim{owner, ::open(lockPathOf(m_folder, owner).c_str(), O_RDWR | O_CLOEXEC), true};
    if (claim.lock >= 0 && ::flock(claim.lock, LOCK_EX | LOCK_NB) != 0) {
        claim.gone = errno != EWOULDBLOCK; // where nothing can be locked, the user decides
        ::close(claim.lock);
        claim.lock = -1;
    }
    m_claims.push_back(std::move(claim));
    return m_claims.back().gone;
}

void RecoveryList::opened(std::size_t index)
{
    if (index < m_songs.size()) m_songs.erase(m_songs.begin() + static_cast<std::ptrdiff_t>(index));
}

void RecoveryList::decline(std::size_t index)
{
    if (index >= m_songs.size()) return;
    removeRecoveryCopy(m_songs[index].copy);
    opened(index);
}

std::string recoveryFolder() { return stateFolder() + "/tessaro/recovery"; }

std::string lockPathOf(const std::string& folder, const std::string& owner) { return folder + '/' + owner + ".lock"; }

void removeRecoveryCopy(const std::string& copy)
{
    ::unlink(copy.c_str());
    ::unlink(recordPathOf(copy).c_str());
    ::unlink(takePathOf(copy).c_str());
}

bool areOfOneSong(const std::string& copy, const std::string& other)
{
    return CopyName(copy).song == CopyName(other).song;
}

void removeEarlierCopies(const std::string& copy)
{
    const CopyName newest(copy);
    for (const fs::path& file : filesIn(folderOf(copy)))
        if (const CopyName name(file); name.song == newest.song && name.takes < newest.takes) ::unlink(file.c_str());
}

void removeCopiesOfSong(const std::string& copy)
{
    for (const fs::path& file : filesIn(folderOf(copy)))
        if (areOfOneSong(file.string(), copy)) ::unlink(file.c_str());
}

} // namespace tessaro
