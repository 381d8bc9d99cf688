// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/clock.h"
#include "base/export.h"
#include "base/file.h"
#include "base/file_ops.h"
#include "realtime/rec/take_records.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tessaro {

/// The journal of a take: a file to which everything that the take is told is added while it runs, for
/// readTakeJournal() after the program's sudden end. A task of the clock writes every tenth of a second and brings the
/// file onto the disk every second; the calls below only put things into memory and never wait. What a failing disk
/// does not take is kept and tried again as long as the take runs.
///
/// The file is not removed here, nor by who reads it: it belongs to the copy of the song beside it and goes with that.
/// User interface thread.
class TESSARO_API TakeJournal {
public:
    TakeJournal(Clock& clock, FileOps& disk);
    TakeJournal(const TakeJournal&) = delete;
    TakeJournal& operator=(const TakeJournal&) = delete;
    /// Ends the take; returns when nothing waits for the disk any more.
    ~TakeJournal();

    /// Begins a new file, without a path none. Ends the take before.
    void begin(const std::string& path, const TakeStart& start);
    // Nothing while no take runs.
    void entry(const LoomRingEntry& entry);
    void passed(std::uint32_t tick);
    /// Nothing more comes; what has come is written.
    void end();

    /// Why the file cannot be written, told once a take; none when all is well.
    FileError takeError() noexcept { return m_error.exchange(FileError::none); }

private:
    struct Take {
        std::string path;
        std::vector<std::uint8_t> bytes; ///< on their way to the file
        bool ended = false;
    };

    template <class Add>
    void add(Add&& add);
    Nanos step(Nanos now);
    bool write(const std::string& path);
    bool open(const std::string& path);
    void sync(Nanos now);
    void finish();
    bool fail(FileError error) noexcept;

    Clock& m_clock;
    FileOps& m_disk;
    TakeWriter m_writer;
    bool m_running = false;

    std::mutex m_mutex;
    std::deque<Take> m_takes; ///< under the mutex; the last one grows, the first one is being written

    // Of the task.
    std::vector<std::uint8_t> m_unwritten;
    int m_file = -1;
    Nanos m_synced{};
    bool m_told = false;

    std::atomic<FileError> m_error = FileError::none;
    std::unique_ptr<TimedTask> m_task;
};

} // namespace tessaro
