// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/take_journal.h"

#include <fcntl.h>

#include <cerrno>
#include <exception>
#include <utility>

namespace tessaro {

namespace {
constexpr std::chrono::milliseconds writeInterval{100};
constexpr std::chrono::seconds syncInterval{1};
} // namespace

TakeJournal::TakeJournal(Clock& clock, FileOps& disk) : m_clock(clock), m_disk(disk) {}

TakeJournal::~TakeJournal()
{
    end();
    m_task.reset();
    step(m_clock.now());
}

void TakeJournal::begin(const std::string& path, const TakeStart& start)
try {
    end();
    if (path.empty()) return;
    Take take{path, {}, false};
    m_writer = {};
    m_writer.start(take.bytes, start);
    {
        const std::scoped_lock lock(m_mutex);
        m_takes.push_back(std::move(take));
    }
    m_running = true;
    if (m_task)
        m_task->wake();
    else
        m_task = m_clock.start(Urgency::normal, [this](Nanos now) { return step(now); });
} catch (const std::exception&) { // no memory, no thread
    m_error = FileError::failed;
}

template <class Add>
void TakeJournal::add(Add&& add)
{
    if (!m_running) return;
    const std::scoped_lock lock(m_mutex);
    Take& take = m_takes.back();
    try {
        add(take.bytes);
    } catch (const std::exception&) {
        take.ended = true;
        m_running = false;
        m_error = FileError::failed;
    }
}

void TakeJournal::entry(const LoomRingEntry& entry)
{
    add([&](auto& bytes) { m_writer.entry(bytes, entry); });
}

void TakeJournal::passed(std::uint32_t tick)
{
    add([&](auto& bytes) { m_writer.passed(bytes, tick); });
}

void TakeJournal::end()
{
    if (!std::exchange(m_running, false)) return;
    {
        const std::scoped_lock lock(m_mutex);
        m_takes.back().ended = true;
    }
    if (m_task) m_task->wake();
}

Nanos TakeJournal::step(Nanos now)
try {
    for (;;) {
        std::string path;
        bool ended = false;
        {
            const std::scoped_lock lock(m_mutex);
            if (m_takes.empty()) return Nanos::max();
            Take& take = m_takes.front();
            path = take.path;
            ended = take.ended;
            if (m_unwritten.empty())
                m_unwritten.swap(take.bytes);
            else
                m_unwritten.insert(m_unwritten.end(), take.bytes.begin(), take.bytes.end());
            take.bytes.clear();
        }
        if (write(path) && (ended || now - m_synced >= syncInterval)) sync(now);
        if (!ended) return now + writeInterval;
        finish();
    }
} catch (const std::exception&) {
    fail(FileError::failed);
    return now + writeInterval;
}

bool TakeJournal::write(const std::string& path)
{
    if (m_file < 0 && !open(path)) return false;
    std::size_t done = 0;
    bool taken = true;
    while (taken && done < m_unwritten.size()) {
        const ssize_t count = m_disk.write(m_file, m_unwritten.data() + done, m_unwritten.size() - done);
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (count == 0 || errno != EINTR)
            taken = fail(count == 0 ? FileError::diskFull : fileErrorOf(errno));
    }
    m_unwritten.erase(m_unwritten.begin(), m_unwritten.begin() + static_cast<std::ptrdiff_t>(done));
    return taken;
}

bool TakeJournal::open(const std::string& path)
{
    makeFolders(folderOf(path));
    m_file = m_disk.open(path, O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0666);
    return m_file >= 0 || fail(fileErrorOf(errno));
}

void TakeJournal::sync(Nanos now)
{
    m_synced = now;
    // A file system without a disk below it answers EINVAL.
    if (m_disk.sync(m_file) != 0 && errno != EINVAL) fail(fileErrorOf(errno));
}

/// The first take is over, and its file as complete as the disk let it become.
void TakeJournal::finish()
{
    if (m_file >= 0) m_disk.close(std::exchange(m_file, -1));
    m_unwritten.clear();
    m_told = false;
    const std::scoped_lock lock(m_mutex);
    m_takes.pop_front();
}

bool TakeJournal::fail(FileError error) noexcept
{
    if (!std::exchange(m_told, true)) m_error = error;
    return false;
}

} // namespace tessaro
