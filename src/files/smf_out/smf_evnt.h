// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "files/smf_out/record.h"

namespace tessaro {

class ByteWriter;

/// Whether an event of this status has bytes in a standard MIDI file.
[[nodiscard]] TESSARO_API bool IsSmfEvnt(std::uint8_t status) noexcept;

/// Writes a record as it stands in a standard MIDI file, without the delta in front. Raises length_error for a body
/// of 256 MB or more, which no file can hold.
TESSARO_API void GetSmfEvnt(const SmfRecord& record, ByteWriter& out);

/// Writes the end of a track, with its delta of 0.
void GetEot(ByteWriter& out);

/// Writes the meta event that names a port, without a delta.
void GetStrTr9MetaPort(std::uint8_t port, ByteWriter& out);

} // namespace tessaro
