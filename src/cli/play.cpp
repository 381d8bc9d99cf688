// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/real_clock.h"
#include "base/ring.h"
#include "cli/commands.h"
#include "cli/console_user.h"
#include "cli/live_run.h"
#include "cli/message_lines.h"
#include "cli/player.h"
#include "platform/platform_midi.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <memory>

namespace tessaro::cli {

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Hands each message of the engine over to the main thread, which writes it to the log. A long message is cut.
class MessageLog final : public SendObserver {
public:
    void sent(const SentMessage& message) noexcept override
    {
        Entry entry;
        entry.due = message.due;
        entry.sent = message.sent;
        entry.tick = message.songTick ? std::int64_t{*message.songTick} : -1;
        entry.port = message.port;
        entry.size = static_cast<std::uint8_t>(std::min(message.bytes.size(), entry.bytes.size()));
        std::memcpy(entry.bytes.data(), message.bytes.data(), entry.size);
        if (!m_entries.push(entry)) m_lost.fetch_add(1, std::memory_order_relaxed);
    }

    /// Times count from `start`.
    void write(std::FILE* out, Nanos start)
    {
        Entry entry;
        while (m_entries.pop(entry)) {
            std::string line = micros(entry.due - start) + ' ' + micros(entry.sent - start) + ' ';
            line += (entry.tick < 0 ? "-" : std::to_string(entry.tick)) + ' ' + std::to_string(entry.port) + ' ';
            appendHex(line, std::span(entry.bytes).first(entry.size));
            line += '\n';
            std::fputs(line.c_str(), out);
        }
    }
    [[nodiscard]] unsigned lost() const noexcept { return m_lost.load(std::memory_order_relaxed); }

private:
    struct Entry {
        Nanos due{};
        Nanos sent{};
        std::int64_t tick = -1;
        std::uint8_t port = 0;
        std::uint8_t size = 0;
        std::array<std::uint8_t, 62> bytes{};
    };

    static std::string micros(Nanos time)
    {
        std::array<char, 40> room{};
        std::snprintf(room.data(), room.size(), "%.3f", static_cast<double>(time.count()) / 1000);
        return room.data();
    }

    SpscRing<Entry, 16384> m_entries;
    std::atomic<unsigned> m_lost{0};
};

/// Whether a song that follows another machine has come to its end. It would wait there for the next start.
bool hasPlayed(Player& player)
{
    return !player.smc().smcPlayStatus() && player.smc().smcGetPlayCount() >= player.editor().GetTimeEnd();
}

} // namespace

int runPlay(const PlayOptions& options)
{
    ConsoleUser user(options.file);
    RealClock clock;
    PlatformMidi midi(clock);
    const auto log = std::make_unique<MessageLog>();
    Player player(clock, midi, user, options.log.empty() ? nullptr : log.get());
    if (!player.open(options.file)) return exitFailure;
    const auto driver = driverOf(options.out, midi.outputs(), "output");
    const auto in = driverOf(options.in, midi.inputs(), "input");
    if (!driver || !in) return exitUsage;
    File logFile(options.log.empty() ? nullptr : std::fopen(options.log.c_str(), "w"), std::fclose);
    if (!options.log.empty() && !logFile) {
        ConsoleUser(options.log).sentence(std::strerror(errno), MessageKind::error);
        return exitFailure;
    }

    catchInterrupts();
    if (!player.startEngine(std::vector<std::int32_t>(player.portCount(), *driver))) {
        user.message(TextId::midiOutFailed, MessageKind::error);
        return exitFailure;
    }
    if (options.sync && !player.followClock(*in)) {
        user.message(TextId::midiInFailed, MessageKind::error);
        return exitFailure;
    }
    if (options.lead) player.smc().setOutFilter(0, true);
    if (*driver == 0) midi.waitForSound(std::chrono::seconds(3));
    std::fprintf(stderr, "%s\n", servicesInUse(midi, clock).c_str());
    const Nanos start = clock.now();
    player.panel().Start();
    while (player.smc().running() && !interrupted() && !(options.sync && hasPlayed(player))) {
        handleMessages(player);
        if (logFile) log->write(logFile.get(), start);
    }
    player.panel().Stop();
    if (!logFile) return exitSuccess;
    log->write(logFile.get(), start);
    if (log->lost() > 0)
        user.sentence(std::to_string(log->lost()) + " messages are missing in the log", MessageKind::warning);
    return exitSuccess;
}

} // namespace tessaro::cli
