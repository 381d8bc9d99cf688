// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/live_run.h"

#include "cli/player.h"
#include "platform/platform_midi.h"

#include <poll.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdio>

namespace tessaro::cli {

namespace {

std::atomic<bool> interruptCame{false};

constexpr int pollMs = 100;

std::optional<std::int32_t> indexOf(const std::string& wanted, const std::vector<std::string>& names)
{
    const auto found = std::find(names.begin(), names.end(), wanted);
    if (found != names.end()) return static_cast<std::int32_t>(found - names.begin());
    std::int32_t number = 0;
    const char* const end = wanted.data() + wanted.size();
    const auto [last, error] = std::from_chars(wanted.data(), end, number);
    if (!wanted.empty() && (error != std::errc() || last != end)) return std::nullopt;
    if (number < 0 || static_cast<std::size_t>(number) >= names.size()) return std::nullopt;
    return number;
}

} // namespace

std::optional<std::int32_t> driverOf(const std::string& wanted, const std::vector<std::string>& names, const char* kind)
{
    const std::optional<std::int32_t> index = indexOf(wanted, names);
    if (!index)
        std::fprintf(stderr, "tessaro-cli: %s is no %s driver; `tessaro-cli devices` lists them\n",
                     wanted.empty() ? "0" : wanted.c_str(), kind);
    return index;
}

void catchInterrupts()
{
    for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, [](int) { interruptCame = true; });
}

bool interrupted() noexcept { return interruptCame; }

void handleMessages(Player& player)
{
    pollfd waiting{player.messages().fd(), POLLIN, 0};
    poll(&waiting, 1, pollMs);
    player.messages().drain();
}

std::string servicesInUse(const PlatformMidi& midi, const Clock& clock)
{
    std::string sentence = midi.sentence();
    if (!clock.realtimeGranted()) sentence.append(" ").append(text(TextId::realtimeRefused, Language::english));
    return sentence;
}

} // namespace tessaro::cli
