// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/message_queue.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessaro {

class CTR9App;
class Smc;
struct LoomRingEntry;

/// A line of the list of modules: an output, the number of the input that the answer came in at, as "1:", and the
/// module. The latter two are "---" for an output without a module.
struct ModuleRow {
    std::string output;
    std::string input;
    std::string module;
};

/// Shows a detection. User interface thread.
class TESSARO_API ModuleDetectionObserver {
public:
    virtual ~ModuleDetectionObserver();
    virtual void rowFound(const ModuleRow& row) = 0;
    /// The last output is done, or the detection was cancelled: no more timer calls are wanted.
    virtual void ended() = 0;
};

/// Finds out which sound modules stand behind the outputs: asks each output for its identity and listens for half a
/// second at one input after the other. Meanwhile it has the devices for itself, and it takes what the engine
/// receives; both are given back at the end, also of a cancelled detection. Each question blocks for about a second,
/// while drivers close and open. User interface thread; borrows all.
class TESSARO_API ModuleDetection {
public:
    static constexpr int timerMs = 100;

    ModuleDetection(CTR9App& app, Smc& smc);
    ~ModuleDetection(); ///< cancels
    ModuleDetection(const ModuleDetection&) = delete;
    ModuleDetection& operator=(const ModuleDetection&) = delete;

    void setObserver(ModuleDetectionObserver* observer) noexcept { m_observer = observer; }
    /// Stops the song and asks the first output. `timer` is to be called every 100 ms from then on.
    void start();
    void timer();
    void cancel();
    [[nodiscard]] bool running() const noexcept { return m_running; }
    /// Output drivers with a module, rising.
    [[nodiscard]] const std::vector<int>& found() const noexcept { return m_found; }

private:
    using Identity = std::array<std::uint8_t, 5>; ///< manufacturer, family and model

    void ask();
    void nextInput();
    void nextOutput();
    void finish();
    void received(const LoomRingEntry& entry);
    void show(const std::string& input, const std::string& module);
    [[nodiscard]] std::string nameOf(const Identity& identity) const;

    CTR9App& m_app;
    Smc& m_smc;
    MessageQueue m_line; ///< what the engine received
    ModuleDetectionObserver* m_observer = nullptr;
    std::vector<int> m_found;
    std::optional<Identity> m_answer;
    std::size_t m_output = 0;
    std::size_t m_input = 0;
    int m_ticks = 0; ///< since the question
    bool m_running = false;
};

/// A row of the list from which ports are chosen, top to bottom.
struct OutputChoice {
    int driver = 0;
    bool checked = false;

    bool operator==(const OutputChoice&) const = default;
};

/// The rows after a detection: outputs with a module first, checked, and behind them the others as they were.
[[nodiscard]] TESSARO_API std::vector<OutputChoice> modulesFirst(std::vector<OutputChoice> rows,
                                                                 const std::vector<int>& found);

} // namespace tessaro
