// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/plain_song.h"

namespace tessaro::test {

/// The rules of import carried out to the letter, slowly, on data of their own: each note looks ahead for its
/// note-off and overwrites it, each block end is set and raised in the order of the events. Shares nothing
/// with the reader.
PlainSong literalImport(Bytes file);

} // namespace tessaro::test
