// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tessaro {

/// What is known of a song beside its copy: all that is needed to name it in a list, and to give it its file back.
struct SongRecord {
    std::string path;      ///< its own file; empty for a song that never had one
    std::uint8_t kind = 0; ///< of that file, as the document numbers them
    std::string title;     ///< from the song itself, its bytes; may be empty
    std::chrono::system_clock::time_point time;
    std::uint32_t ticks = 0; ///< length
    std::uint32_t milliseconds = 0;

    [[nodiscard]] std::string encode() const;
    /// False, with nothing changed, for a text that encode() has not made or that is damaged.
    bool decode(const std::string& text);
};

/// A copy of a song that was not saved.
struct TESSARO_API RecoverableSong {
    std::string copy;        ///< path of the copy, a native file
    SongRecord record;       ///< with the file's own time when the record is missing or damaged
    bool hasRecord = false;  ///< only then is more known than the time
    std::uint64_t bytes = 0; ///< size of the copy
    std::string take;        ///< path of the journal of a take that was under way; empty for none

    /// For a list, as UTF-8: the name of the song's file, else its title; empty when there is neither.
    [[nodiscard]] std::string name() const;
};

/// The copies that programs left which ended without saving, the newest first. It deletes no work unless told.
/// While a list lives, its copies stand in no other program's list. Main thread only.
class TESSARO_API RecoveryList {
public:
    /// Reads the folder; one that is missing makes an empty list.
    explicit RecoveryList(std::string folder);
    RecoveryList(const RecoveryList&) = delete;
    RecoveryList& operator=(const RecoveryList&) = delete;
    ~RecoveryList();

    [[nodiscard]] const std::vector<RecoverableSong>& songs() const noexcept { return m_songs; }
    /// Takes a song from the list whose copy CTR9Doc::Recover has opened. The copy stays until that song is saved.
    void opened(std::size_t index);
    /// The user does not want it: deletes the copy.
    void decline(std::size_t index);

private:
    struct Claim {
        std::string owner;
        int lock = -1;
        bool gone = false; ///< the program runs no more
    };
    bool claim(const std::string& owner);
    void tidy(const std::filesystem::path& file);

    std::string m_folder;
    std::vector<RecoverableSong> m_songs;
    std::vector<Claim> m_claims; ///< for each program that the folder names
};

/// Where copies of unsaved songs lie, without a slash at the end; it need not exist.
[[nodiscard]] TESSARO_API std::string recoveryFolder();
/// A copy is called OWNER-SONG.TAKES.tqm with two numbers, its record OWNER-SONG.TAKES.ini, the journal of a take that
/// began with it OWNER-SONG.TAKES.take, and a running owner holds a lock on OWNER.lock. Of the copies of a song the one
/// with the most takes counts; where it stands, the others and their journals are of no use any more.
inline constexpr const char* copyExtension = ".tqm";
[[nodiscard]] std::string recordPathOf(const std::string& copy);
[[nodiscard]] std::string takePathOf(const std::string& copy);
[[nodiscard]] std::string lockPathOf(const std::string& folder, const std::string& owner);
[[nodiscard]] bool areOfOneSong(const std::string& copy, const std::string& other);
/// Deletes a copy, its record and its journal.
TESSARO_API void removeRecoveryCopy(const std::string& copy);
/// The same for those copies of its song that this one makes needless.
void removeEarlierCopies(const std::string& copy);
/// The same for all copies of its song.
void removeCopiesOfSong(const std::string& copy);

} // namespace tessaro
