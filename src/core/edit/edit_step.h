// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"

#include <string>

namespace tessaro {

class CEvnt;
class CRealBlk;

/// Keeps the primitive changes of an editing step so that they can be taken back. Changes arrive in the order
/// in which they were made. Every call answers false when the change could not be recorded.
class TESSARO_API UndoRecorder {
public:
    virtual ~UndoRecorder();
    virtual bool openStep(const std::string& title) = 0;
    virtual void closeStep() = 0;
    virtual bool evntInserted(POSITION trk, POSITION blk, POSITION evnt) = 0;
    /// The event is about to be unlinked.
    virtual bool evntDeleted(POSITION trk, POSITION blk, POSITION evnt) = 0;
    /// Offers an event that has just been unlinked. True when its deletion is recorded: the recorder owns it now.
    virtual bool keep(CRealBlk& from, CEvnt* event) = 0;
    virtual bool trkMoved(int oldNumber, POSITION trk) = 0;
};

/// The editing step under way: whether it is open, what it has touched, and the road to the recorder. The
/// flags work outside of an open step too, and so do the recording calls, which then do nothing and succeed:
/// the change stands and cannot be taken back. Main thread only.
class TESSARO_API EditStep {
public:
    struct Flags {
        bool askGhostDelete = true;  ///< the question about linked blocks has not come yet in this step
        bool warnImmovable = true;   ///< nor the note about events that cannot move
        bool playWasRunning = false; ///< the transport was stopped for the step
        bool trkTypeChanged = false; ///< a track got its type as a side effect
        bool measChanged = false;
        bool tempoChanged = false;
        bool keyChanged = false;
    };

    /// Borrowed; null for none.
    void setRecorder(UndoRecorder* recorder) noexcept { m_recorder = recorder; }

    /// False while a step is open, and when the recorder refuses.
    bool open(const std::string& title);
    /// True when the step that ends has changed anything.
    bool close();
    [[nodiscard]] bool isOpen() const noexcept { return m_open; }
    /// As if no step had ever been opened.
    void reset() noexcept;
    [[nodiscard]] Flags& flags() noexcept { return m_flags; }

    bool SetUndoEvntIns(POSITION trk, POSITION blk, POSITION evnt);
    bool SetUndoEvntDel(POSITION trk, POSITION blk, POSITION evnt);
    bool SetUndoTrkMove(int oldNumber, POSITION trk);
    /// Takes an event that has just been unlinked from `from`: to the recorder when its deletion is recorded,
    /// otherwise it is deleted.
    void retire(CRealBlk& from, CEvnt* event);

private:
    [[nodiscard]] bool recording() const noexcept { return m_open && m_recorder; }

    Flags m_flags;
    UndoRecorder* m_recorder = nullptr;
    bool m_open = false;
    bool m_changed = false;
};

} // namespace tessaro
