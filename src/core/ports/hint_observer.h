// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

namespace tessaro {

class CEditor;

/// A view of the song. It registers with the editor and is told of every change, synchronously and on the
/// main thread. Positions behind a hint are read from the editor during the call and not kept.
class TESSARO_API HintObserver {
public:
    virtual ~HintObserver();
    /// `sender` is the view that made the change, null when nobody is left out. `editor` is null for the
    /// codes that carry no hint object. An observer may register or unregister observers here.
    virtual void onHint(const HintObserver* sender, int code, CEditor* editor) = 0;
};

} // namespace tessaro
