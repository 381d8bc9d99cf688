// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "base/export.h"
#include "base/file.h"
#include "base/file_ops.h"
#include "core/doc/recovery.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

class CEditor;
class SongFiles;

/// The keeper of unsaved work: it writes a copy of the song at hand into the recovery folder, under a name of its own
/// for each running program and song. Songs are encoded where it is called, in memory; a thread of its own does all
/// that touches the disk. A copy is replaced as a whole, so the one before stays until the new one is complete.
///
/// While a take runs, a journal beside the copy holds what came in since. The song with the take gets a copy of another
/// name, and only when that one stands do the copy before and its journal go: at every moment the newest copy, with
/// its journal, is the whole of the work.
///
/// A locked file beside the copies tells those of running programs from those left behind. What is not dropped
/// stays for RecoveryList. Main thread only.
class TESSARO_API Autosave {
public:
    /// A little less than a minute, so that the copy is on the disk within a minute of the change.
    static constexpr Nanos usualInterval = std::chrono::seconds(50);

    /// Nothing stands on the disk before the first copy.
    Autosave(Clock& clock, SongFiles& files, FileOps& disk, std::string folder, Nanos interval = usualInterval);
    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;
    /// Returns when nothing waits for the disk any more. Copies stay.
    ~Autosave();

    /// Copies the song when `changes`, a number that grows with every change of it, is not the one of the last copy and
    /// the interval has passed since. Path and kind of `record` are the caller's, the rest is filled in.
    void tick(CEditor& editor, const SongRecord& record, std::uint64_t changes);
    /// Copies the song at once; returns when the copy is on the disk. Its path, empty after a failure.
    std::string keepNow(CEditor& editor, const SongRecord& record, std::uint64_t changes);
    /// A take begins: copies the song, due or not. The path for the take's journal, empty when there can be no copy.
    std::string beginTake(CEditor& editor, const SongRecord& record, std::uint64_t changes);
    /// The take has ended, and no journal stands for it any more: copies the song with it.
    void endTake(CEditor& editor, const SongRecord& record, std::uint64_t changes);
    /// The song is saved or given up: deletes its copy, and what belongs to it.
    void drop();
    /// Another song is at hand: the next copy gets a new name, the last one stays unless it was dropped.
    void nextSong();

    /// Why the last copy failed, told once; none when all is well.
    FileError takeError() noexcept;
    /// The number of changes that the copy on the disk holds, 0 without a copy. Any thread.
    [[nodiscard]] std::uint64_t keptChanges() const noexcept { return m_kept.load(); }

private:
    /// A copy to write, or without bytes a song whose copies are to be deleted.
    struct Job {
        std::string copy;
        SongRecord record;
        std::optional<std::vector<std::uint8_t>> bytes;
        std::uint64_t changes = 0;
    };

    std::optional<Job> encode(CEditor& editor, SongRecord record, std::uint64_t changes);
    void hand(Job job);
    void doWaiting();
    bool carryOut(const Job& job);
    bool replace(const std::string& path, std::span<const std::uint8_t> bytes);
    bool takeLock();
    bool fail(FileError error) noexcept;
    [[nodiscard]] std::string copyPath() const;

    Clock& m_clock;
    SongFiles& m_files;
    FileOps& m_disk;
    const std::string m_folder;
    const std::string m_owner; ///< the name of this program among the copies
    const Nanos m_interval;

    unsigned m_song = 0;         ///< number of the song at hand
    unsigned m_takes = 0;        ///< takes of it that have ended
    std::uint64_t m_taken = 0;   ///< changes in the last copy that was encoded, 0 for none
    std::optional<Nanos> m_last; ///< when that was
    std::size_t m_size = 0;      ///< of that copy
    bool m_hasCopy = false;      ///< of the song at hand, on the disk or on its way

    std::mutex m_waitingMutex;
    std::vector<Job> m_waiting;          ///< for the disk; one for each song, the newest
    std::mutex m_diskMutex;              ///< held while something is done on the disk
    int m_lock = -1;                     ///< under the disk's mutex
    std::vector<std::string> m_standing; ///< copies on the disk, under its mutex
    std::atomic<std::uint64_t> m_kept = 0;
    std::atomic<FileError> m_error = FileError::none;
    std::unique_ptr<TimedTask> m_worker;
};

} // namespace tessaro
