// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/autosave.h"

#include "base/replacing_file.h"
#include "core/edit/editor.h"
#include "core/ports/song_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <exception>
#include <utility>

namespace tessaro {

namespace {

constexpr std::uint8_t nativeKind = 4;
constexpr std::uint8_t metaTrackName = 0x03;
constexpr std::size_t room = 1U << 16U; // for what a song may have grown by

/// Process id and time of start: no other program has had both.
std::string ownName()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::to_string(::getpid()) + '-'
         + std::to_string(std::chrono::duration_cast<std::chrono::microseconds>(now).count());
}

/// The name that stands in the master track.
std::string titleOf(const CEditor& editor)
{
    _EDT_EVNT event;
    for (POSITION at = editor.GetHeadEvntPos(0, 0); at && editor.GetNextEvnt(0, 0, at, event);)
        if (event.status == 0xFF && event.metaType == metaTrackName)
            return {reinterpret_cast<const char*>(event.data), event.szData};
    return {};
}

} // namespace

Autosave::Autosave(Clock& clock, SongFiles& files, FileOps& disk, std::string folder, Nanos interval)
    : m_clock(clock)
    , m_files(files)
    , m_disk(disk)
    , m_folder(std::move(folder))
    , m_owner(ownName())
    , m_interval(interval)
{
    m_worker = m_clock.start(Urgency::normal, [this](Nanos) {
        doWaiting();
        return Nanos::max();
    });
}

Autosave::~Autosave()
{
    m_worker.reset();
    doWaiting();
    if (m_lock < 0) return;
    if (m_standing.empty()) ::unlink(lockPathOf(m_folder, m_owner).c_str());
    ::close(m_lock);
}

std::string Autosave::copyPath() const
{
    return m_folder + '/' + m_owner + '-' + std::to_string(m_song) + '.' + std::to_string(m_takes) + copyExtension;
}

void Autosave::tick(CEditor& editor, const SongRecord& record, std::uint64_t changes)
{
    if (changes == m_taken || (m_last && m_clock.now() - *m_last < m_interval)) return;
    if (auto job = encode(editor, record, changes)) hand(std::move(*job));
}

std::string Autosave::keepNow(CEditor& editor, const SongRecord& record, std::uint64_t changes)
{
    const auto job = encode(editor, record, changes);
    if (!job) return {};
    {
        const std::scoped_lock lock(m_waitingMutex);
        std::erase_if(m_waiting, [&](const Job& waiting) { return areOfOneSong(waiting.copy, job->copy); });
    }
    const std::scoped_lock lock(m_diskMutex);
    return carryOut(*job) ? job->copy : std::string();
}

std::string Autosave::beginTake(CEditor& editor, const SongRecord& record, std::uint64_t changes)
{
    auto job = encode(editor, record, changes);
    if (!job) return {};
    std::string journal = takePathOf(job->copy);
    hand(std::move(*job));
    return journal;
}

void Autosave::endTake(CEditor& editor, const SongRecord& record, std::uint64_t changes)
{
    ++m_takes;
    m_taken = 0; // what was copied before is not enough, even if this copy fails
    if (auto job = encode(editor, record, changes)) hand(std::move(*job));
}

void Autosave::drop()
{
    m_taken = 0;
    if (std::exchange(m_hasCopy, false)) hand({.copy = copyPath(), .record = {}, .bytes = std::nullopt, .changes = 0});
}

void Autosave::nextSong()
{
    ++m_song;
    m_takes = 0;
    m_taken = 0;
    m_hasCopy = false;
    m_last.reset();
}

FileError Autosave::takeError() noexcept
{
    const FileError error = m_error.exchange(FileError::none);
    if (error != FileError::none) m_taken = 0; // so that the next tick tries again
    return error;
}

std::optional<Autosave::Job> Autosave::encode(CEditor& editor, SongRecord record, std::uint64_t changes)
try {
    m_last = m_clock.now();
    Job job{.copy = copyPath(), .record = std::move(record), .bytes = std::vector<std::uint8_t>(), .changes = changes};
    job.record.title = titleOf(editor);
    job.record.time = std::chrono::system_clock::now();
    job.record.ticks = editor.GetTimeEnd();
    job.record.milliseconds = editor.TimeToMsecond(job.record.ticks);
    job.bytes->reserve(m_size + room);
    VectorSink sink(*job.bytes);
    if (!m_files.save(nativeKind, editor, sink)) {
        fail(FileError::failed);
        return std::nullopt;
    }
    m_size = job.bytes->size();
    m_taken = changes;
    m_hasCopy = true;
    return job;
} catch (const std::exception&) {
    fail(FileError::failed);
    return std::nullopt;
}

void Autosave::hand(Job job)
{
    {
        const std::scoped_lock lock(m_waitingMutex);
        std::erase_if(m_waiting, [&](const Job& waiting) { return areOfOneSong(waiting.copy, job.copy); });
        m_waiting.push_back(std::move(job));
    }
    m_worker->wake();
}

void Autosave::doWaiting()
{
    for (;;) {
        // Held before a job is taken, so that jobs for one song stay in order.
        const std::scoped_lock disk(m_diskMutex);
        Job job;
        {
            const std::scoped_lock lock(m_waitingMutex);
            if (m_waiting.empty()) return;
            job = std::move(m_waiting.front());
            m_waiting.erase(m_waiting.begin());
        }
        carryOut(job);
    }
}

bool Autosave::carryOut(const Job& job)
try {
    const auto ofThisSong = [&](const std::string& copy) { return areOfOneSong(copy, job.copy); };
    if (!job.bytes) {
        removeCopiesOfSong(job.copy);
        std::erase_if(m_standing, ofThisSong);
        m_kept = 0;
        return true;
    }
    makeFolders(m_folder);
    if (!takeLock() || !replace(job.copy, *job.bytes)) return false;
    removeEarlierCopies(job.copy);
    std::erase_if(m_standing, ofThisSong);
    m_standing.push_back(job.copy);
    m_kept = job.changes;
    // Without its record the copy is still offered, by the time of its file.
    const std::string record = job.record.encode();
    replace(recordPathOf(job.copy), {reinterpret_cast<const std::uint8_t*>(record.data()), record.size()});
    return true;
} catch (const std::exception&) {
    return fail(FileError::failed);
}

bool Autosave::replace(const std::string& path, std::span<const std::uint8_t> bytes)
{
    ReplacingFile file(path, m_disk);
    file.write(bytes);
    const FileError error = file.commit();
    return error == FileError::none || fail(error);
}

/// The file gets its name when it is locked, so that nobody ever finds it free.
bool Autosave::takeLock()
{
    if (m_lock >= 0) return true;
    const std::string fresh = m_folder + "/.tessaro-" + std::to_string(::getpid()) + "-lock";
    const int lock = ::open(fresh.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (lock < 0) return fail(fileErrorOf(errno));
    // Where nothing can be locked, the copies look like those of a program that is gone: they are offered, no more.
    ::flock(lock, LOCK_EX | LOCK_NB);
    if (::rename(fresh.c_str(), lockPathOf(m_folder, m_owner).c_str()) != 0) {
        fail(fileErrorOf(errno));
        ::close(lock);
        return false;
    }
    m_lock = lock;
    return true;
}

bool Autosave::fail(FileError error) noexcept
{
    m_error = error;
    return false;
}

} // namespace tessaro
