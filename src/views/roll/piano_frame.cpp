// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/roll/piano_frame.h"

#include "views/roll/piano_view.h"

namespace tessaro {

CPianoFrame::CPianoFrame(const ViewParts& parts, int track) : RollFrame(parts, new CPianoView(parts))
{
    retranslate();
    restoreState();
    setTrack(track);
}

} // namespace tessaro
