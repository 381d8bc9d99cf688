// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/export.h"
#include "base/list.h"

#include <cstdint>
#include <vector>

namespace tessaro {

class CEditor;
class HintObserver;

/// Codes of the hints that the editor sends.
namespace hint {
inline constexpr int evntChng = 1;
inline constexpr int timeChng = 2;
inline constexpr int measChng = 3;
inline constexpr int tsChng = 4;
inline constexpr int locationChng = 5;
inline constexpr int delEvnt = 6;
inline constexpr int insEvnt = 7;
inline constexpr int insRest = 8;
inline constexpr int blkNew = 9;
inline constexpr int blkMove = 10;
inline constexpr int blkDel = 11;
inline constexpr int blkApp = 12;
inline constexpr int blkDiv = 13;
inline constexpr int blkMerge = 14;
inline constexpr int addBlk = 16;
inline constexpr int blkName = 17;
inline constexpr int trkSolo = 18;
inline constexpr int trkMute = 19;
inline constexpr int chSolo = 20;
inline constexpr int chMute = 21;
inline constexpr int trkArrange = 22;
inline constexpr int blkReSize = 23;
inline constexpr int blkReal = 24;
inline constexpr int blkUpdate = 27;
inline constexpr int trkCh = 29;
inline constexpr int trkPort = 30;
inline constexpr int dispReq = 32;
inline constexpr int soloMute = 33;
inline constexpr int allTrkPort = 34;
inline constexpr int trkType = 35;
inline constexpr int styleNew = 40;
inline constexpr int styleDel = 41;
inline constexpr int styleMove = 42;
inline constexpr int styleSize = 43;
inline constexpr int sysSetupChng = 50;
inline constexpr int trkInstType = 51;
inline constexpr int trkStaffType = 52;
inline constexpr int trkWavVol = 53;
inline constexpr int keyChng = 54;
inline constexpr int scrEvtMove = 60;
inline constexpr int scrEvtIndex = 61;
} // namespace hint

/// What a hint says of the change: borrowed positions and values, valid until the next hint.
struct HintFields {
    POSITION trk = nullptr;
    POSITION blk = nullptr;
    POSITION evnt = nullptr;
    POSITION trk2 = nullptr; ///< second set: the destination of a move, or what is new
    POSITION blk2 = nullptr;
    POSITION evnt2 = nullptr;
    std::uint8_t port = 0;
    std::uint8_t ch = 0;
    POSITION style = nullptr;
    POSITION style2 = nullptr;
    POSITION scrArt = nullptr;
    std::int32_t scrArtIndex = 0;
    POSITION scrDsp = nullptr;
    std::int32_t scrDspIndex = 0;
};

/// The place where a change is told: the fields of the last hint, and the views that hear of it, in the
/// order in which they registered. It borrows the views. Main thread only.
class TESSARO_API HintBoard {
public:
    void addObserver(HintObserver* view);
    void removeObserver(const HintObserver* view) noexcept;

    /// Stores the fields and tells every view but `sender`.
    void send(const HintObserver* sender, int code, CEditor* object, const HintFields& fields);
    [[nodiscard]] const HintFields& fields() const noexcept { return m_fields; }

private:
    HintFields m_fields;
    std::vector<HintObserver*> m_views; ///< null where a view left during a broadcast
    int m_depth = 0;                    ///< broadcasts under way
};

} // namespace tessaro
