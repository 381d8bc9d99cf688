// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"
#include "core/model/records.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tessaro {

/// Kinds of event by the high nibble of the status; the low nibble is the MIDI channel.
namespace status {
inline constexpr std::uint8_t rest = 0x00;
inline constexpr std::uint8_t nrpn = 0x10;
inline constexpr std::uint8_t rpn = 0x20;
inline constexpr std::uint8_t voice = 0x30;
inline constexpr std::uint8_t wave = 0x40;
inline constexpr std::uint8_t mci = 0x50;
inline constexpr std::uint8_t syng = 0x60;
inline constexpr std::uint8_t noteOff = 0x80;
inline constexpr std::uint8_t note = 0x90;
inline constexpr std::uint8_t polyPressure = 0xA0;
inline constexpr std::uint8_t control = 0xB0;
inline constexpr std::uint8_t program = 0xC0;
inline constexpr std::uint8_t pressure = 0xD0;
inline constexpr std::uint8_t pitchBend = 0xE0;
inline constexpr std::uint8_t sysex = 0xF0;
inline constexpr std::uint8_t sysexPart = 0xF7;
inline constexpr std::uint8_t metaEvent = 0xFF;

[[nodiscard]] constexpr std::uint8_t kind(std::uint8_t s) noexcept { return s & 0xF0U; }
[[nodiscard]] constexpr std::uint8_t channel(std::uint8_t s) noexcept { return s & 0x0FU; }
} // namespace status

/// An event: one timed MIDI or program-defined unit inside a real block.
///
/// Times are ticks, `time` from the start of the real block. The event owns its payload and texts, which
/// live in one side record that plain notes and channel messages do without. User interface thread;
/// the feeder reads events while the song stands still.
///
/// The whole-kind writers return false, and change nothing, on a status or size that they refuse.
class TESSARO_API CEvnt : public ListNode {
public:
    CEvnt() noexcept;
    ~CEvnt();
    CEvnt(const CEvnt&) = delete;
    CEvnt& operator=(const CEvnt&) = delete;

    [[nodiscard]] std::uint8_t GetStatus() const noexcept { return m_status; }
    [[nodiscard]] std::uint8_t GetPost1() const noexcept { return m_post1; }
    [[nodiscard]] std::uint8_t GetPost2() const noexcept { return m_post2; }
    [[nodiscard]] std::uint8_t GetPost3() const noexcept { return m_post3; }
    [[nodiscard]] std::uint8_t GetPost4() const noexcept { return m_post4; }
    [[nodiscard]] std::uint8_t GetMetaType() const noexcept { return m_metaType; }
    [[nodiscard]] std::uint32_t GetTime() const noexcept { return m_time; }
    [[nodiscard]] std::uint32_t GetGateTime() const noexcept { return m_gateTime; }
    [[nodiscard]] std::uint32_t GetSzData() const noexcept;
    /// The payload; valid until it is replaced.
    [[nodiscard]] std::span<const std::uint8_t> payload() const noexcept;
    [[nodiscard]] const std::string& GetMciCommand() const noexcept;
    [[nodiscard]] const std::string& GetFileName() const noexcept;
    /// Fills the whole record; its data pointer borrows the payload.
    void Get(_EDT_EVNT& rec) const;

    [[nodiscard]] bool isMeta(std::uint8_t type) const noexcept
    {
        return m_status == status::metaEvent && m_metaType == type;
    }

    void SetStatus(std::uint8_t v) noexcept { m_status = v; }
    void SetPost1(std::uint8_t v) noexcept { m_post1 = v; }
    void SetPost2(std::uint8_t v) noexcept { m_post2 = v; }
    void SetPost3(std::uint8_t v) noexcept { m_post3 = v; }
    void SetPost4(std::uint8_t v) noexcept { m_post4 = v; }
    /// Does not move the event in its list: use CRealBlk::Sort for that.
    void SetTime(std::uint32_t v) noexcept { m_time = v; }
    void SetGateTime(std::uint32_t v) noexcept { m_gateTime = v; }
    void SetFileName(std::string name);
    void SetMciCommand(std::string command);

    /// Takes all of another event but its place in a list. Throws bad_alloc.
    void copyFrom(const CEvnt& other);
    /// The same both ways; nothing can fail.
    void swapWith(CEvnt& other) noexcept;

    /// Writes the kind that the record's status names; false for a status that no event has.
    bool Set(const _EDT_EVNT& rec);
    bool SetNoteOn(const _EDT_EVNT& rec) noexcept;
    bool SetGateTime(const _EDT_EVNT& rec) noexcept;
    bool Set3(const _EDT_EVNT& rec) noexcept;
    bool Set2(const _EDT_EVNT& rec) noexcept;
    bool SetNrpn(const _EDT_EVNT& rec) noexcept;
    bool SetRpn(const _EDT_EVNT& rec) noexcept;
    bool SetVce(const _EDT_EVNT& rec) noexcept;
    bool SetWave(const _EDT_EVNT& rec);
    bool SetMci(const _EDT_EVNT& rec);
    bool SetMetaEvnt(const _EDT_EVNT& rec);
    bool SetSysEx(const _EDT_EVNT& rec);
    bool SetSyng(const _EDT_EVNT& rec);

    /// Takes a meta event of any body size; only types of 0x80 and above are refused.
    bool SetMeta(std::uint32_t time, std::uint8_t type, std::uint32_t size, const std::uint8_t* data,
                 std::uint32_t offset);
    bool SetSys(std::uint32_t time, std::uint32_t size, const std::uint8_t* data, std::uint32_t offset,
                std::uint8_t status);
    bool SetSyng(std::uint32_t size, const std::uint8_t* data, std::uint32_t offset);
    bool SetTs(std::uint32_t time, const std::uint8_t* data);
    bool SetTempo(std::uint32_t time, const std::uint8_t* data);

    /// Readers from a standard MIDI stream whose cursor stands behind the status byte; they move the
    /// cursor behind the event. False when the stream ends inside the event or the status has no kind.
    bool Set(_EDT_SMF& smf);
    bool SetMetaEvnt(_EDT_SMF& smf);
    bool SetSysEx(_EDT_SMF& smf);
    /// Keeps the time in the gate time as well, for SetNoteOff to take the difference.
    bool SetNoteOn(_EDT_SMF& smf);
    bool SetNoteOff(_EDT_SMF& smf);
    bool Set3(_EDT_SMF& smf);
    bool Set2(_EDT_SMF& smf);
    /// Accumulates 7 bits a byte until a byte without bit 7; false at the stream's end.
    static bool ReadVarLenQnt(_EDT_SMF& smf, std::uint32_t& value);

    /// Releases the payload.
    void GmemFree() noexcept;

    /// Whether the index of its real block goes by it.
    [[nodiscard]] bool isMarked() const noexcept { return m_marked; }
    void setMarked(bool on) noexcept { m_marked = on; }
    /// Appends to a system exclusive; false on any other status, or without a payload to append to.
    bool PackSysex(const std::uint8_t* data, std::uint32_t count);

private:
    struct Side;

    Side& side();
    bool setPayload(const std::uint8_t* data, std::uint32_t size);
    void setShort(const _EDT_EVNT& rec, int posts) noexcept;

    std::unique_ptr<Side> m_side;
    std::uint32_t m_time = 0;
    std::uint32_t m_gateTime = 0;
    std::uint8_t m_status = 0;
    std::uint8_t m_post1 = 0;
    std::uint8_t m_post2 = 0;
    std::uint8_t m_post3 = 0;
    std::uint8_t m_post4 = 0;
    std::uint8_t m_metaType = 0;
    bool m_marked = false;
};

[[nodiscard]] inline bool isRest(const CEvnt& e) noexcept { return status::kind(e.GetStatus()) == status::rest; }

static_assert(sizeof(CEvnt) <= 40);

} // namespace tessaro
