// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/child_factory.h"

#include "base/strings.h"
#include "views/drum/drum_frame.h"
#include "views/list/list_frame.h"
#include "views/master/master_frame.h"
#include "views/roll/piano_frame.h"

namespace tessaro {

std::unique_ptr<ChildFrame> makeChild(const ViewParts& parts, WindowKind kind, int track)
{
    switch (kind) {
    case WindowKind::piano: return std::make_unique<CPianoFrame>(parts, track);
    case WindowKind::drum: return std::make_unique<CDrumFrame>(parts, track);
    case WindowKind::eventList: return std::make_unique<CListFrm>(parts, track);
    case WindowKind::masterTrack: return std::make_unique<CMstrFrm>(parts);
    default: return nullptr;
    }
}

} // namespace tessaro
