// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"
#include "files/native/event_form.h"

#include <cstdint>
#include <string>

namespace tessaro {

class CRealBlk;

/// The reader of the events of one real block of a native song file: it appends them in the file's order. Each
/// operation answers false when the bytes end inside an event, on a status that no file has, and when memory is out.
/// Times that pass 32 bits stay at the last tick.
class EvntLoader {
public:
    EvntLoader(ByteReader in, CRealBlk& real) : m_in(in), m_real(real) {}

    /// All events up to the end of the bytes.
    bool LoadTr9Evnts();

private:
    bool LoadTr9Evnt();
    bool LoadTr9Sys();
    bool LoadTr9Meta();
    bool LoadTr9Posts(int count);
    bool LoadTr9Note();
    bool LoadTr9Syng();
    bool LoadTr9Wave();
    bool LoadTr9Mci();

    /// A new event at the tail, with time and status; null when the bytes have ended before, or memory is out.
    CEvnt* addEvnt();
    ByteReader::Bytes data() { return m_in.bytes(m_in.vlq()); }
    std::string text() { return std::string(m_in.chars(m_in.vlq())); }

    ByteReader m_in;
    CRealBlk& m_real;
    std::uint32_t m_time = 0;
    std::uint8_t m_status = 0;
};

} // namespace tessaro
