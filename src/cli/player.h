// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/message_queue.h"
#include "base/strings.h"
#include "core/doc/profile_store.h"
#include "core/doc/tr9doc.h"
#include "core/edit/carried_score.h"
#include "core/edit/editor_ports.h"
#include "files/song_formats.h"
#include "realtime/loom/loom.h"
#include "realtime/play/smc.h"
#include "realtime/transport/cnp_window.h"
#include "realtime/transport/realtime_messages.h"
#include "realtime/transport/song_transport.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace tessaro::cli {

/// A song document with engine and transport around it, as the window has them, but for the window. No settings
/// of the user's take part. Borrows clock, devices, user and observer; one thread, apart from the clock's tasks.
class Player {
public:
    /// Waves that come with a song are unpacked below `appDirectory`; without one they stay in the file.
    Player(Clock& clock, MidiSystem& midi, UserPort& user, SendObserver* observer = nullptr,
           const std::string& appDirectory = {});
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    /// False when the file failed; the reason has been shown.
    bool open(const std::string& file) { return m_doc.Load(file); }
    /// Starts the engine, one port for each driver number. False when a driver failed.
    bool startEngine(std::span<const std::int32_t> drivers);
    /// Takes what this input driver receives. Not before the engine's start; false when the driver failed.
    bool openInput(std::int32_t driver);
    /// The same, and lets its MIDI clock set time.
    bool followClock(std::int32_t driver);
    /// Who is told of message devicesChanged.
    void onDevicesChanged(std::function<void(const Message&)> told) { m_devicesChanged = std::move(told); }

    [[nodiscard]] CTR9Doc& doc() noexcept { return m_doc; }
    [[nodiscard]] CEditor& editor() noexcept { return m_doc.GetEditor(); }
    [[nodiscard]] Smc& smc() noexcept { return m_smc; }
    [[nodiscard]] Loom& loom() noexcept { return m_loom; }
    [[nodiscard]] CCnpWindow& panel() noexcept { return m_panel; }
    [[nodiscard]] ProfileStore& settings() noexcept { return m_settings; }
    [[nodiscard]] MessageQueue& messages() noexcept { return m_messages; }
    /// Ports that the song's tracks name: the highest plus 1, at least 1 and at most 128.
    [[nodiscard]] std::size_t portCount();

private:
    void handle(const Message& message);

    Strings m_strings;
    SongFormats m_reader;
    QuietPorts m_quiet;
    CarriedScore m_score;
    NullAppWindows m_windows;
    NoMciPlayer m_media;
    ProfileStore m_settings{std::string()};
    Loom m_loom;
    Smc m_smc;
    CCnpWindow m_panel;
    SongTransport m_transport;
    CTR9Doc m_doc;
    RealtimeMessages m_realtime;
    std::function<void(const Message&)> m_devicesChanged;
    MessageQueue m_messages;
};

} // namespace tessaro::cli
