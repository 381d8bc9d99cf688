// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/model/style_ctab.h"

#include <algorithm>
#include <string_view>

namespace tessaro {

void writeStyleCtab(ByteWriter& out, const _STYLE_CTAB& table)
{
    out.u8(table.track);
    out.chars({table.name.data(), table.name.size()});
    out.u8(table.part);
    out.u8(table.kept);
    out.bytes(table.noteMute);
    out.bytes(table.chordMute);
    for (const std::uint8_t field : {table.srcRoot, table.srcChord, table.noteRule, table.noteTable, table.highKey,
                                     table.noteLow, table.noteHigh, table.retrigRule, table.extMode})
        out.u8(field);
    out.u16be(table.extLength);
    out.bytes(table.extNote);
    out.bytes(table.extVelocity);
}

_STYLE_CTAB readStyleCtab(ByteReader& in)
{
    _STYLE_CTAB table;
    const auto read = [&in](auto& array) {
        const auto bytes = in.bytes(array.size());
        std::copy(bytes.begin(), bytes.end(), array.begin());
    };
    table.track = in.u8();
    read(table.name);
    table.part = in.u8();
    table.kept = in.u8();
    read(table.noteMute);
    read(table.chordMute);
    for (std::uint8_t* field : {&table.srcRoot, &table.srcChord, &table.noteRule, &table.noteTable, &table.highKey,
                                &table.noteLow, &table.noteHigh, &table.retrigRule, &table.extMode})
        *field = in.u8();
    table.extLength = in.u16be();
    read(table.extNote);
    read(table.extVelocity);
    return table;
}

} // namespace tessaro
