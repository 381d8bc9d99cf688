// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"

#include <cstdint>
#include <string>

namespace tessaro {

class CTrk;

/// What a native song file tells of a block of a track.
struct BlkForm {
    std::uint8_t type = 0;
    std::uint32_t top = 0;
    std::uint32_t end = 0;
    std::uint32_t real = 0; ///< the number of its real block
    std::string name;
};

/// Appends the settings of a track, but for its name.
void CnvTrkInfo(const CTrk& trk, ByteWriter& out);

/// Appends a block. False when the name is too long for the file.
bool CnvBlkInfo(const BlkForm& blk, ByteWriter& out);
/// The block at the cursor; the reader fails when it is cut off.
[[nodiscard]] BlkForm readBlkInfo(ByteReader& in);

} // namespace tessaro
