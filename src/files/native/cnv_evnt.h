// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/bytes.h"

#include <functional>

namespace tessaro {

class CEvnt;
class CRealBlk;

/// Appends an event in the form of the native song file, without its delta. False when its status has no form, which
/// appends nothing, and when a payload or text is too long for the file.
bool CnvEvnt(const CEvnt& event, ByteWriter& out);

/// Appends the events of a real block, each behind its delta from the one before. What has no form is left out, and
/// what `isLeftOut` names; its delta goes to the next event. False when a payload or text is too long for the file.
bool CnvBlk(const CRealBlk& real, ByteWriter& out, const std::function<bool(const CEvnt&)>& isLeftOut = nullptr);

} // namespace tessaro
