// SPDX-License-Identifier: GPL-3.0-or-later
// The song editor's hints: what each one carries, what it does first, and how a view reads it.
#include "core/edit/editor.h"
#include "core/model/meta.h"

namespace tessaro {

namespace {

void resetPlay(POSITION blk) noexcept
{
    if (blk) List<CBlk>::get(blk)->resetPlayState();
}

HintFields scrEvt(POSITION trk, POSITION blk, POSITION evnt, POSITION art, int artIndex, POSITION dsp,
                  int dspIndex) noexcept
{
    return {.trk = trk,
            .blk = blk,
            .evnt = evnt,
            .scrArt = art,
            .scrArtIndex = artIndex,
            .scrDsp = dsp,
            .scrDspIndex = dspIndex};
}

} // namespace

void CEditor::Hint(const HintObserver* view, int code) { m_hints.send(view, code, this, m_hints.fields()); }

void CEditor::HintEvntChng(POSITION trk, POSITION blk, POSITION evnt) { send(hint::evntChng, {trk, blk, evnt}); }

void CEditor::HintTimeChng()
{
    InitTimeInfo();
    BlkSizeWave();
    m_hints.send(nullptr, hint::timeChng, nullptr, {});
}

void CEditor::HintMeasChng()
{
    InitMeasInfo();
    m_hints.send(nullptr, hint::measChng, nullptr, {});
}

void CEditor::HintTsChng(POSITION trk, POSITION blk, POSITION evnt)
{
    InitMeasInfo();
    send(hint::tsChng, {trk, blk, evnt});
}

void CEditor::HintLocationChng(POSITION trk, POSITION blk, POSITION oldEvnt, POSITION newEvnt)
{
    if (newEvnt && List<CEvnt>::get(newEvnt)->isMeta(meta::tempo)) {
        InitTimeInfo();
        BlkSizeWave();
    }
    send(hint::locationChng, {.trk = trk, .blk = blk, .evnt = oldEvnt, .evnt2 = newEvnt});
}

void CEditor::HintDelEvnt(POSITION trk, POSITION blk, POSITION evnt) { send(hint::delEvnt, {trk, blk, evnt}); }

void CEditor::HintInsEvnt(POSITION trk, POSITION blk, POSITION evnt) { send(hint::insEvnt, {trk, blk, evnt}); }

void CEditor::HintInsRest(POSITION trk, POSITION blk, POSITION evnt) { send(hint::insRest, {trk, blk, evnt}); }

void CEditor::HintBlkNew(POSITION trk, POSITION blk)
{
    resetPlay(blk);
    send(hint::blkNew, {trk, blk});
}

void CEditor::HintBlkRealRec(POSITION trk, POSITION blk) { send(hint::blkNew, {trk, blk}); }

void CEditor::HintBlkMove(POSITION trk, POSITION blk, POSITION trk2, POSITION blk2)
{
    resetPlay(blk2);
    send(hint::blkMove, {.trk = trk, .blk = blk, .trk2 = trk2, .blk2 = blk2});
}

void CEditor::HintBlkDel(POSITION trk, POSITION blk) { send(hint::blkDel, {trk, blk}); }

void CEditor::HintBlkApp(POSITION trk, POSITION blk) { send(hint::blkApp, {trk, blk}); }

void CEditor::HintBlkDiv(POSITION trk, POSITION blk, POSITION blk2)
{
    resetPlay(blk2);
    send(hint::blkDiv, {.trk = trk, .blk = blk, .trk2 = trk, .blk2 = blk2});
}

void CEditor::HintBlkMerge(POSITION trk, POSITION blk, POSITION trk2, POSITION blk2)
{
    send(hint::blkMerge, {.trk = trk, .blk = blk, .trk2 = trk2, .blk2 = blk2});
}

void CEditor::HintAddBlk(POSITION trk, POSITION blk) { send(hint::addBlk, {trk, blk}); }

void CEditor::HintBlkName(POSITION trk, POSITION blk)
{
    SetModify();
    send(hint::blkName, {trk, blk});
}

void CEditor::HintTrkSolo(POSITION trk) { send(hint::trkSolo, {trk}); }

void CEditor::HintTrkMute(POSITION trk, bool) { send(hint::trkMute, {trk}); }

void CEditor::HintChSolo(std::uint8_t port, std::uint8_t ch) { send(hint::chSolo, {.port = port, .ch = ch}); }

void CEditor::HintChMute(std::uint8_t port, std::uint8_t ch) { send(hint::chMute, {.port = port, .ch = ch}); }

void CEditor::HintTrkArrange(POSITION trk, POSITION trk2)
{
    m_ports.transport.reloadTracks();
    SetTrkOnOff();
    send(hint::trkArrange, {.trk = trk, .trk2 = trk2});
}

void CEditor::HintBlkReSize(POSITION trk, POSITION blk) { send(hint::blkReSize, {trk, blk}); }

void CEditor::HintBlkReal(POSITION trk, POSITION blk)
{
    resetPlay(blk);
    send(hint::blkReal, {trk, blk});
}

void CEditor::HintBlkUpdate(POSITION trk, POSITION blk) { send(hint::blkUpdate, {trk, blk}); }

void CEditor::HintTrkCh(POSITION trk, std::uint8_t ch)
{
    if (!trk) return;
    m_ports.transport.setTrkCh(Song::numberOf(trk), ch);
    send(hint::trkCh, {.trk = trk, .ch = ch});
}

void CEditor::HintTrkPort(POSITION trk, std::uint8_t port)
{
    if (!trk) return;
    m_ports.transport.setTrkPort(Song::numberOf(trk), port);
    send(hint::trkPort, {.trk = trk, .port = port});
}

void CEditor::HintDispReq()
{
    HintTimeChng();
    send(hint::dispReq, {});
    if (!m_flags.trkTypeChanged) return;
    HintTrkType();
    m_flags.trkTypeChanged = false;
}

void CEditor::HintSoloMute() { send(hint::soloMute, {}); }

void CEditor::HintTrkPort() { send(hint::allTrkPort, {}); }

void CEditor::HintTrkType() { send(hint::trkType, {}); }

void CEditor::HintStyleNew(POSITION style) { send(hint::styleNew, {.style = style}); }

void CEditor::HintStyleDel(POSITION style) { send(hint::styleDel, {.style = style}); }

void CEditor::HintStyleMove(POSITION style, POSITION style2)
{
    send(hint::styleMove, {.style = style, .style2 = style2});
}

void CEditor::HintStyleSize(POSITION style) { send(hint::styleSize, {.style = style}); }

void CEditor::HintSysSetupChng() { send(hint::sysSetupChng, {}); }

void CEditor::HintTrkInstType(POSITION trk) { send(hint::trkInstType, {trk}); }

void CEditor::HintTrkStaffType(POSITION trk) { send(hint::trkStaffType, {trk}); }

void CEditor::HintTrkWavVol(POSITION trk) { send(hint::trkWavVol, {trk}); }

void CEditor::HintKeyChng() { send(hint::keyChng, {}); }

void CEditor::HintScrEvtMove(POSITION trk, POSITION blk, POSITION evnt, POSITION art, int artIndex, POSITION dsp,
                             int dspIndex)
{
    send(hint::scrEvtMove, scrEvt(trk, blk, evnt, art, artIndex, dsp, dspIndex));
}

void CEditor::HintScrEvtIndex(POSITION trk, POSITION blk, POSITION evnt, POSITION art, int artIndex, POSITION dsp,
                              int dspIndex)
{
    send(hint::scrEvtIndex, scrEvt(trk, blk, evnt, art, artIndex, dsp, dspIndex));
}

void CEditor::GetHint(POSITION& trk) const noexcept { trk = m_hints.fields().trk; }

void CEditor::GetHint(POSITION& trk, POSITION& blk) const noexcept
{
    GetHint(trk);
    blk = m_hints.fields().blk;
}

void CEditor::GetHint(POSITION& trk, POSITION& blk, POSITION& evnt) const noexcept
{
    GetHint(trk, blk);
    evnt = m_hints.fields().evnt;
}

void CEditor::GetHintLocationChng(POSITION& trk, POSITION& blk, POSITION& oldEvnt, POSITION& newEvnt) const noexcept
{
    GetHint(trk, blk, oldEvnt);
    newEvnt = m_hints.fields().evnt2;
}

void CEditor::GetHintBlkMove(POSITION& trk, POSITION& blk, POSITION& trk2, POSITION& blk2) const noexcept
{
    GetHint(trk, blk);
    trk2 = m_hints.fields().trk2;
    blk2 = m_hints.fields().blk2;
}

void CEditor::GetHintBlkDiv(POSITION& trk, POSITION& blk, POSITION& trk2, POSITION& blk2) const noexcept
{
    GetHintBlkMove(trk, blk, trk2, blk2);
}

void CEditor::GetHintBlkMerge(POSITION& trk, POSITION& blk, POSITION& trk2, POSITION& blk2) const noexcept
{
    GetHintBlkMove(trk, blk, trk2, blk2);
}

void CEditor::GetHintTrkArrange(POSITION& trk, POSITION& trk2) const noexcept
{
    GetHint(trk);
    trk2 = m_hints.fields().trk2;
}

void CEditor::GetHintCh(std::uint8_t& port, std::uint8_t& ch) const noexcept
{
    port = m_hints.fields().port;
    ch = m_hints.fields().ch;
}

void CEditor::GetHintStyle(POSITION& style) const noexcept { style = m_hints.fields().style; }

void CEditor::GetHintStyle(POSITION& style, POSITION& style2) const noexcept
{
    GetHintStyle(style);
    style2 = m_hints.fields().style2;
}

void CEditor::GetHintScrEvt(POSITION& trk, POSITION& blk, POSITION& evnt, POSITION& art, int& artIndex, POSITION& dsp,
                            int& dspIndex) const noexcept
{
    GetHint(trk, blk, evnt);
    const HintFields& told = m_hints.fields();
    art = told.scrArt;
    artIndex = told.scrArtIndex;
    dsp = told.scrDsp;
    dspIndex = told.scrDspIndex;
}

} // namespace tessaro
