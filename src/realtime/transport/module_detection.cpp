// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/transport/module_detection.h"

#include "base/messages.h"
#include "core/doc/tr9app.h"
#include "realtime/loom/que_rec.h"
#include "realtime/play/smc.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr int longestWait = 4; ///< ticks of the timer
constexpr std::size_t answerSize = 15;
constexpr std::size_t identityStart = 5;

/// Whether these bytes answer the question for an identity.
bool isAnswer(const LoomRingEntry& entry)
{
    if (entry.status != 0xF0 || entry.length != answerSize) return false;
    const std::uint8_t* b = entry.data;
    return b[0] == 0xF0 && b[1] == 0x7E && b[3] == 0x06 && b[4] == 0x02 && b[answerSize - 1] == 0xF7;
}

} // namespace

ModuleDetectionObserver::~ModuleDetectionObserver() = default;

ModuleDetection::ModuleDetection(CTR9App& app, Smc& smc)
    : m_app(app)
    , m_smc(smc)
    , m_line([this](const Message& message) {
        if (message.id == msg::data) received(*reinterpret_cast<const LoomRingEntry*>(message.lParam));
    })
{
}

ModuleDetection::~ModuleDetection()
{
    m_observer = nullptr;
    cancel();
}

void ModuleDetection::start()
{
    if (m_running) return;
    m_running = true;
    m_found.clear();
    m_output = m_input = 0;
    if (m_app.GetDrvNum() > 0)
        ask();
    else
        finish();
}

void ModuleDetection::cancel()
{
    if (m_running) finish();
}

void ModuleDetection::ask()
{
    m_app.CloseMidiDev();
    m_line.drain(); // what came in late for the question before
    m_answer.reset();
    m_ticks = 0;
    m_app.OpenMidiDev(static_cast<int>(m_output), static_cast<int>(m_input));
    m_smc.smcSetRecOwner(&m_line);
    m_smc.smcRecStart();
    const auto device = static_cast<std::uint8_t>(m_app.GetMidiIdReqDevNum() & 0x7F);
    const std::uint8_t question[] = {0xF0, 0x7E, device, 0x06, 0x01, 0xF7};
    m_app.SendLongMsg(0, question);
}

void ModuleDetection::received(const LoomRingEntry& entry)
{
    if (!m_answer && isAnswer(entry)) {
        m_answer.emplace();
        std::copy_n(entry.data + identityStart, m_answer->size(), m_answer->begin());
    }
    m_smc.smcIncRrdpt();
}

void ModuleDetection::timer()
{
    if (!m_running) return;
    m_line.drain();
    if (m_answer) {
        m_found.push_back(static_cast<int>(m_output));
        show(std::to_string(m_input + 1) + ":", nameOf(*m_answer));
        nextOutput();
    } else if (++m_ticks > longestWait) {
        nextInput();
    }
}

void ModuleDetection::nextInput()
{
    if (++m_input < m_app.GetMidiInDrvNum()) return ask();
    show("---", "---");
    nextOutput();
}

void ModuleDetection::nextOutput()
{
    m_input = 0;
    if (++m_output < m_app.GetDrvNum())
        ask();
    else
        finish();
}

void ModuleDetection::finish()
{
    m_running = false;
    m_smc.smcRecStop();
    m_smc.smcSetRecOwner(nullptr);
    m_line.drain();
    m_app.RecoverMidiDev();
    if (m_observer) m_observer->ended();
}

void ModuleDetection::show(const std::string& input, const std::string& module)
{
    if (m_observer) m_observer->rowFound({m_app.GetDrvName(static_cast<std::uint8_t>(m_output)), input, module});
}

std::string ModuleDetection::nameOf(const Identity& identity) const
{
    constexpr const char* digits = "0123456789ABCDEF";
    std::string key;
    for (const std::uint8_t byte : identity) {
        key += digits[byte >> 4U];
        key += digits[byte & 0x0FU];
    }
    return ProfileStore(m_app.GetAppDirectory() + "ModelName.ini").getString("Model Name", key, key);
}

std::vector<OutputChoice> modulesFirst(std::vector<OutputChoice> rows, const std::vector<int>& found)
{
    const auto others = std::stable_partition(rows.begin(), rows.end(), [&](const OutputChoice& row) {
        return std::find(found.begin(), found.end(), row.driver) != found.end();
    });
    std::for_each(rows.begin(), others, [](OutputChoice& row) { row.checked = true; });
    return rows;
}

} // namespace tessaro
