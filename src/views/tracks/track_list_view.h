// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/tracks/trk_pram_view.h"

namespace tessaro {
using TrackListView = CTrkPramView;
} // namespace tessaro
