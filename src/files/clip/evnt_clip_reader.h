// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"
#include "base/export.h"
#include "core/model/records.h"
#include "files/clip/clip_chunks.h"

#include <cstdint>
#include <span>

namespace tessaro {

/// The reader of events from the clipboard, one after the other as records. Their times count from the first one's
/// delta on; times that pass 32 bits stay at the last tick. Data of a record is borrowed from the image. Each length is
/// checked against the image.
class TESSARO_API EvntClipReader {
public:
    explicit EvntClipReader(std::span<const std::uint8_t> image) : m_in(image) {}

    /// First of all: whether the image is of this kind. What stands behind its events is left alone.
    bool ChkTr9c(ClipKind kind);
    /// The next event; false at the end, and from the place on where the image is broken.
    bool GetEvntTr9c(_EDT_EVNT& rec);
    /// Whether nothing broken has been met.
    [[nodiscard]] bool ok() const noexcept { return m_in.ok(); }

private:
    /// The operations of the kinds answer false for what is passed over.
    bool GetEvntTr9cBody(_EDT_EVNT& rec);
    bool GetEvntTr9cSys(_EDT_EVNT& rec);
    bool GetEvntTr9cMeta(_EDT_EVNT& rec);
    bool GetEvntTr9cWave(_EDT_EVNT& rec);
    bool GetEvntTr9cMci(_EDT_EVNT& rec);
    bool GetEvntTr9cSyng(_EDT_EVNT& rec);
    bool GetEvntTr9cNote(_EDT_EVNT& rec);
    bool GetEvntTr9c2(_EDT_EVNT& rec);
    bool GetEvntTr9c3(_EDT_EVNT& rec);
    bool GetEvntTr9c4(_EDT_EVNT& rec);
    bool GetEvntTr9c5(_EDT_EVNT& rec);
    void data(_EDT_EVNT& rec);

    ByteReader m_in;
    std::uint32_t m_time = 0;
};

} // namespace tessaro
