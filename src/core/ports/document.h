// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"

namespace tessaro {

/// The document that owns a song editor, as the editor sees it. Main thread only.
class TESSARO_API DocumentPort {
public:
    virtual ~DocumentPort();
    virtual void SetModifiedFlag(bool modified) = 0;
    [[nodiscard]] virtual bool IsModified() const = 0;
};

} // namespace tessaro
