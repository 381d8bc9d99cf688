// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/phrase_blk.h"

#include <array>
#include <cstdint>
#include <string>

namespace tessaro {

/// Parts of the style track; each style block has a slot for every part.
inline constexpr int stylePartCount = 16;
/// The first of the accompaniment parts, which solo, mute and the engine know; the ones below do not sound.
inline constexpr int firstSoundingPart = 8;

/// A block of the style track: one section of a style on a span of absolute ticks, repeated until the block ends.
/// It owns its phrases, ordered by their tops in each slot, and borrows all real blocks, which blocks share. A slot
/// outside 0 to 15 answers 0 or null and takes nothing. User interface thread; the feeder reads it while no edit runs.
class TESSARO_API CStyleBlk : public ListNode {
public:
    CStyleBlk() = default;
    CStyleBlk(const CStyleBlk&) = delete;
    CStyleBlk& operator=(const CStyleBlk&) = delete;
    ~CStyleBlk() { InitPhrase(); }

    [[nodiscard]] bool GetMute(int slot) const noexcept { return valid(slot) && m_mute[at(slot)]; }
    void SetMute(int slot, bool on) noexcept;
    [[nodiscard]] std::uint8_t GetNumerator() const noexcept { return m_numerator; }
    void SetNumerator(std::uint8_t value) noexcept { m_numerator = value; }
    /// A power of two, as in the time signature.
    [[nodiscard]] std::uint8_t GetDenominator() const noexcept { return m_denominator; }
    void SetDenominator(std::uint8_t value) noexcept { m_denominator = value; }
    /// Ticks of a measure, and of the section; never 0.
    [[nodiscard]] std::uint32_t GetMeasClock() const noexcept { return m_measClock; }
    void SetMeasClock(std::uint32_t ticks) noexcept { m_measClock = ticks ? ticks : 1; }
    [[nodiscard]] std::uint32_t GetSectionClock() const noexcept { return m_sectionClock; }
    void SetSectionClock(std::uint32_t ticks) noexcept { m_sectionClock = ticks ? ticks : 1; }
    [[nodiscard]] bool GetTempoEnable() const noexcept { return m_tempoEnable; }
    void SetTempoEnable(bool on) noexcept { m_tempoEnable = on; }
    /// Microseconds a quarter note, most significant byte first.
    [[nodiscard]] const std::array<std::uint8_t, 3>& GetTempo() const noexcept { return m_tempo; }
    void SetTempo(const std::array<std::uint8_t, 3>& tempo) noexcept { m_tempo = tempo; }
    [[nodiscard]] std::uint32_t GetTimeTop() const noexcept { return m_top; }
    [[nodiscard]] std::uint32_t GetTimeEnd() const noexcept { return m_end; }
    /// Absolute ticks, the end exclusive.
    void SetTime(std::uint32_t top, std::uint32_t end) noexcept
    {
        m_top = top;
        m_end = end;
    }
    [[nodiscard]] const std::string& GetFileName() const noexcept { return m_fileName; }
    void SetFileName(std::string name) { m_fileName = std::move(name); }
    [[nodiscard]] const std::string& GetStyleName() const noexcept { return m_styleName; }
    void SetStyleName(std::string name) { m_styleName = std::move(name); }
    [[nodiscard]] const std::string& GetSectionName() const noexcept { return m_sectionName; }
    void SetSectionName(std::string name) { m_sectionName = std::move(name); }

    /// Null for a slot without set-up data.
    [[nodiscard]] CRealBlk* GetSetup(int slot) const noexcept { return valid(slot) ? m_setup[at(slot)] : nullptr; }
    void SetSetup(int slot, CRealBlk* real) noexcept;
    void InitSetup() noexcept { m_setup.fill(nullptr); }

    [[nodiscard]] std::uint32_t GetCount(int slot) const noexcept;
    [[nodiscard]] POSITION GetHeadPos(int slot) const noexcept;
    [[nodiscard]] POSITION GetTailPos(int slot) const noexcept;
    /// The phrase at a position, and the step from it; false for a null position.
    bool GetNext(POSITION& pos, CPhraseBlk** phrase) const noexcept;
    bool GetPrev(POSITION& pos, CPhraseBlk** phrase) const noexcept;
    bool GetAt(POSITION pos, CPhraseBlk** phrase) const noexcept;
    /// A new phrase, not linked: the caller owns it until it adds it.
    void NewPhrase(CPhraseBlk** phrase) { *phrase = new CPhraseBlk; }
    /// Behind the last phrase whose top is not greater than `time`. Null, and the phrase stays the caller's, outside
    /// the slots.
    POSITION AddPhrase(int slot, std::uint32_t time, CPhraseBlk* phrase) noexcept;
    POSITION AddHeadPhrase(int slot, CPhraseBlk* phrase) noexcept;
    POSITION InsertAfterPhrase(int slot, POSITION pos, CPhraseBlk* phrase) noexcept;
    /// Deletes the phrases of a slot, or of all.
    void RemovePhrase(int slot) noexcept;
    void RemovePhrase() noexcept { InitPhrase(); }
    void InitPhrase() noexcept;

private:
    static constexpr bool valid(int slot) noexcept { return slot >= 0 && slot < stylePartCount; }
    static constexpr std::size_t at(int slot) noexcept { return static_cast<std::size_t>(slot); }

    std::array<bool, stylePartCount> m_mute{};
    std::uint8_t m_numerator = 4;
    std::uint8_t m_denominator = 2;
    std::uint32_t m_measClock = 1920;
    std::uint32_t m_sectionClock = 1920;
    bool m_tempoEnable = false;
    std::array<std::uint8_t, 3> m_tempo{0x07, 0xA1, 0x20};
    std::uint32_t m_top = 0;
    std::uint32_t m_end = 0;
    std::string m_fileName;
    std::string m_styleName;
    std::string m_sectionName;
    std::array<CRealBlk*, stylePartCount> m_setup{};
    std::array<List<CPhraseBlk>, stylePartCount> m_phrases;
};

} // namespace tessaro
