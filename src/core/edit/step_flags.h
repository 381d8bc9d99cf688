// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaro {

/// What the editing step under way has asked and touched. They work outside of an open step too.
struct StepFlags {
    bool askGhostDelete = true;  ///< the question about linked blocks has not come yet in this step
    bool keepGhosts = false;     ///< it was answered with No
    bool warnImmovable = true;   ///< nor the note about events that cannot move
    bool playWasRunning = false; ///< the transport was stopped for the step
    bool trkTypeChanged = false; ///< a track got its type as a side effect
    bool measChanged = false;
    bool tempoChanged = false;
    bool keyChanged = false;
};

} // namespace tessaro
