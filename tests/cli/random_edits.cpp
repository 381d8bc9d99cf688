// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/random_edits.h"

#include <algorithm>
#include <array>

namespace tessaro::test {

namespace {

constexpr std::uint32_t tracksInPlay = 8;

CTrk* trkOf(POSITION pos) { return List<CTrk>::get(pos); }
CBlk* blkOf(POSITION pos) { return List<CBlk>::get(pos); }

template <class T>
POSITION pick(Dice& dice, const List<T>& list)
{
    return list.empty() ? nullptr : list.at(dice.below(static_cast<std::uint32_t>(list.count())));
}

} // namespace

void RandomEdits::makeSong()
{
    if (m_inside)
        for (int n = 1; n <= static_cast<int>(tracksInPlay); ++n)
            editor().SetTrkType(n, n > 6 ? trktype::wave : trktype::midi);
    editor().song().masterBlk()->SetTimeEndCmp(400000);
    for (int i = 0; i < 30; ++i) blkNew();
    for (int i = 0; i < 12; ++i) blkGhost();
    for (int i = 0; i < 150; ++i) insEvnt();
    for (int i = 0; i < 6; ++i) styleNew();
    editor().HintMeasChng();
    editor().HintDispReq();
    editor().InitUndoNode();
    editor().RemoveScratch();
}

void RandomEdits::edit()
{
    static constexpr std::array<Operation, 33> operations{
        &RandomEdits::blkNew,     &RandomEdits::blkCopy,    &RandomEdits::blkGhost,    &RandomEdits::blkGhost,
        &RandomEdits::blkMove,    &RandomEdits::blkDel,     &RandomEdits::blkApp,      &RandomEdits::blkDiv,
        &RandomEdits::blkMerge,   &RandomEdits::blkRealize, &RandomEdits::blkSize,     &RandomEdits::blkOfst,
        &RandomEdits::blkPaste,   &RandomEdits::insEvnt,    &RandomEdits::insEvnt,     &RandomEdits::insEvnt,
        &RandomEdits::insEvnt,    &RandomEdits::recEvnt,    &RandomEdits::recSetEvnt,  &RandomEdits::setEvnt,
        &RandomEdits::setEvnt,    &RandomEdits::setEvnt,    &RandomEdits::setLocation, &RandomEdits::setLocation,
        &RandomEdits::deleteEvnt, &RandomEdits::deleteEvnt, &RandomEdits::deleteEvnt,  &RandomEdits::noteApp,
        &RandomEdits::noteDiv,    &RandomEdits::rest,       &RandomEdits::trkArrange,  &RandomEdits::styleNew,
        &RandomEdits::styleEdit};
    (this->*operations[dice().below(operations.size())])();
}

POSITION RandomEdits::anyTrk() { return editor().GetTrkPos(static_cast<int>(dice().below(tracksInPlay + 1))); }

POSITION RandomEdits::target(POSITION source)
{
    const POSITION trk = anyTrk();
    const bool takesType = trkOf(trk)->IsEmpty() && trkOf(trk)->GetType() != trkOf(source)->GetType();
    return m_inside && takesType ? source : trk;
}

RandomEdits::Place RandomEdits::anyBlk()
{
    Place place;
    place.trk = anyTrk();
    place.blk = pick(dice(), trkOf(place.trk)->blocks());
    return place;
}

RandomEdits::Place RandomEdits::anyEvnt()
{
    Place place = anyBlk();
    if (place.blk) place.evnt = pick(dice(), blkOf(place.blk)->GetRealBlk()->events());
    return place;
}

_EDT_EVNT RandomEdits::anyRecord(std::uint32_t time, std::uint8_t trkType, bool master)
{
    static constexpr std::array<std::uint8_t, 13> channelKinds{0x10, 0x20, 0x30, 0x50, 0x60, 0x90, 0x90,
                                                               0x90, 0xA0, 0xB0, 0xC0, 0xD0, 0xE0};
    static constexpr std::array<std::uint8_t, 5> masterMetas{0x02, 0x51, 0x58, 0x58, 0x59};
    _EDT_EVNT rec;
    rec.time = time;
    rec.post1 = dice().byteBelow(128);
    rec.post2 = dice().byteBelow(128);
    rec.post3 = dice().byteBelow(128);
    rec.post4 = dice().byteBelow(128);
    m_body.assign(1 + dice().below(6), dice().byteBelow(128));
    if (trkType == trktype::wave) {
        rec.status = status::wave;
        rec.gateTime = dice().between(1, 480);
        rec.fileName = "sound.wav";
    } else if (master || dice().oneIn(8)) {
        rec.status = status::metaEvent;
        rec.metaType = master ? masterMetas[dice().below(masterMetas.size())] : dice().byteBelow(8);
        if (rec.metaType == 0x51) m_body = {dice().byteBelow(10), dice().byteBelow(255), 1};
        if (rec.metaType == 0x58)
            m_body = {static_cast<std::uint8_t>(dice().between(1, 6)), dice().byteBelow(4), 24, 8};
        if (rec.metaType == 0x59) m_body = {dice().byteBelow(5), dice().byteBelow(2)};
    } else if (dice().oneIn(10)) {
        rec.status = status::sysex;
        m_body.back() = 0xF7;
    } else {
        rec.status = channelKinds[dice().below(channelKinds.size())];
        if (rec.status == status::note || rec.status == status::syng) rec.gateTime = dice().between(1, 960);
        if (rec.status == status::note) rec.post1 = static_cast<std::uint8_t>(60 + dice().below(3));
        if (rec.status == status::mci) rec.fileName = "film", rec.mciCommand = "play";
        rec.status |= dice().byteBelow(16);
    }
    if (status::kind(rec.status) == status::syng || rec.status >= status::sysex) {
        rec.data = m_body.data();
        rec.szData = static_cast<std::uint32_t>(m_body.size());
    }
    return rec;
}

void RandomEdits::fit(_EDT_EVNT& rec, const CBlk& blk) const
{
    if (!m_inside) return;
    rec.time = std::min(std::max(rec.time, blk.GetTimeTop()), blk.GetTimeEnd());
    rec.gateTime = std::min(rec.gateTime, blk.GetTimeEnd() - rec.time);
}

void RandomEdits::blkNew()
{
    const std::uint32_t top = anyTime();
    const std::uint32_t end = top + dice().between(1, 8) * 480;
    const POSITION trk = anyTrk();
    const bool mayTakeType = !m_inside || trkOf(trk)->GetType() == trktype::midi;
    switch (dice().below(4)) {
    case 0: editor().BlkRec(trk, top, end); break;
    case 1:
        if (mayTakeType) editor().BlkRealRec(trk, top, end);
        break;
    default: editor().BlkNew(trk, top, end); break;
    }
}

void RandomEdits::blkCopy()
{
    const Place from = anyBlk();
    if (from.blk) editor().BlkCopy(from.trk, from.blk, target(from.trk), anyTime());
}

void RandomEdits::blkGhost()
{
    const Place from = anyBlk();
    if (from.blk) editor().BlkGhost(from.trk, from.blk, target(from.trk), anyTime());
}

void RandomEdits::blkMove()
{
    const Place from = anyBlk();
    if (from.blk) editor().BlkMove(from.trk, from.blk, target(from.trk), anyTime());
}

void RandomEdits::blkDel()
{
    const Place place = anyBlk();
    if (!place.blk) return;
    if (dice().oneIn(4))
        editor().BlkDelGhost(place.trk, place.blk);
    else
        editor().BlkDel(place.trk, place.blk);
}

void RandomEdits::blkApp()
{
    const Place place = anyBlk();
    const Place other = anyBlk();
    if (place.blk && other.blk) editor().BlkApp(place.trk, place.blk, other.trk, other.blk);
}

void RandomEdits::blkDiv()
{
    const Place place = anyBlk();
    if (place.blk) editor().BlkDiv(place.trk, place.blk, blkOf(place.blk)->GetTimeTop() + dice().below(20) * 120);
}

void RandomEdits::blkMerge()
{
    const Place place = anyBlk();
    const Place other = anyBlk();
    if (place.blk && other.blk) editor().BlkMerge(place.trk, place.blk, other.trk, other.blk, anyTime());
}

void RandomEdits::blkRealize()
{
    const Place place = anyBlk();
    if (place.blk) editor().BlkRealize(place.trk, place.blk);
}

void RandomEdits::blkSize()
{
    const Place place = anyBlk();
    const bool isMaster = place.trk == editor().GetTrkPos(0); // a shorter master block grows again
    if (place.blk && !(isMaster && m_inside)) editor().BlkSize(place.trk, place.blk, anyTime());
}

void RandomEdits::blkOfst()
{
    const Place place = anyBlk();
    if (!place.blk || place.trk == editor().GetTrkPos(0)) return;
    const bool forward = !m_inside && dice().oneIn(2);
    editor().BlkOfst(place.trk, place.blk, std::int64_t{dice().below(500)} * (forward ? 1 : -1));
}

void RandomEdits::blkPaste()
{
    const Place from = anyBlk();
    if (!from.blk || blkOf(from.blk)->GetType() != blktype::real) return;
    CRealBlk* real = editor().NewAddTailRealBlk();
    for (std::uint32_t i = dice().below(5); i > 0; --i) real->InsEvnt(anyRecord(i * 60, trktype::midi, false));
    const std::uint32_t top = anyTime();
    editor().BlkPaste(target(from.trk), top, top + 1920, real);
}

void RandomEdits::insEvnt()
{
    const Place place = anyBlk();
    if (!place.blk) return;
    const bool master = place.trk == editor().GetTrkPos(0);
    _EDT_EVNT rec = anyRecord(anyTime(), trkOf(place.trk)->GetType(), master);
    if (!master) fit(rec, *blkOf(place.blk));
    editor().InsEvnt(place.trk, place.blk, rec);
}

void RandomEdits::recEvnt()
{
    const Place place = anyBlk();
    if (!place.blk || place.trk == editor().GetTrkPos(0) || blkOf(place.blk)->GetType() != blktype::real) return;
    _EDT_EVNT rec = anyRecord(anyTime(), trktype::midi, false);
    fit(rec, *blkOf(place.blk));
    editor().RecEvnt(place.trk, place.blk, rec);
}

void RandomEdits::recSetEvnt()
{
    const Place place = anyEvnt();
    if (!place.evnt || List<CEvnt>::get(place.evnt)->GetStatus() < status::note) return;
    if (status::kind(List<CEvnt>::get(place.evnt)->GetStatus()) != status::note) return;
    if (blkOf(place.blk)->GetType() != blktype::real) return;
    _EDT_EVNT rec;
    List<CEvnt>::get(place.evnt)->Get(rec);
    rec.post2 = dice().byteBelow(128);
    rec.time += blkOf(place.blk)->GetTimeTop();
    editor().RecSetEvnt(place.trk, place.blk, place.evnt, rec);
}

void RandomEdits::setEvnt()
{
    const Place place = anyEvnt();
    if (!place.evnt) return;
    _EDT_EVNT rec;
    List<CEvnt>::get(place.evnt)->Get(rec);
    rec.time += blkOf(place.blk)->GetTimeTop();
    const bool isSignature = List<CEvnt>::get(place.evnt)->isMeta(0x58);
    if (isSignature) m_body = {static_cast<std::uint8_t>(dice().between(1, 6)), dice().byteBelow(4), 24, 8};
    if (isSignature) rec.data = m_body.data(), rec.szData = 4;
    rec.post2 = dice().byteBelow(128);
    if (rec.gateTime) rec.gateTime = dice().between(1, 960);
    if (place.trk != editor().GetTrkPos(0)) fit(rec, *blkOf(place.blk));
    editor().SetEvnt(place.trk, place.blk, place.evnt, rec);
}

void RandomEdits::setLocation()
{
    const Place place = anyEvnt();
    if (!place.evnt) return;
    const CBlk& blk = *blkOf(place.blk);
    std::uint32_t time = anyTime();
    const std::uint32_t gate = List<CEvnt>::get(place.evnt)->GetGateTime();
    if (m_inside && time + gate > blk.GetTimeEnd()) time = blk.GetTimeTop();
    if (m_inside && time + gate > blk.GetTimeEnd()) return;
    editor().SetLocation(place.trk, place.blk, place.evnt, time);
}

void RandomEdits::deleteEvnt()
{
    const Place place = anyEvnt();
    if (place.evnt && blkOf(place.blk)->GetType() == blktype::real)
        editor().DeleteEvnt(place.trk, place.blk, place.evnt);
}

void RandomEdits::noteApp()
{
    const Place place = anyEvnt();
    if (place.evnt && place.evnt->next) editor().NoteApp(place.trk, place.blk, place.evnt->next, place.evnt);
}

void RandomEdits::noteDiv()
{
    const Place place = anyEvnt();
    if (!place.evnt) return;
    const CEvnt& note = *List<CEvnt>::get(place.evnt);
    const std::uint32_t start = blkOf(place.blk)->GetTimeTop() + note.GetTime();
    editor().NoteDiv(place.trk, place.blk, place.evnt, start + dice().below(note.GetGateTime() + 1));
}

void RandomEdits::rest()
{
    if (m_inside) return;
    const Place place = anyEvnt();
    if (!place.evnt || blkOf(place.blk)->GetType() != blktype::real || place.trk == editor().GetTrkPos(0)) return;
    const bool isRest = status::kind(List<CEvnt>::get(place.evnt)->GetStatus()) == status::rest;
    _EDT_EVNT rec;
    rec.time = anyTime();
    rec.gateTime = 240;
    if (!isRest)
        editor().InsRest(place.trk, place.blk, rec);
    else if (dice().oneIn(2))
        editor().SetLocation(place.trk, place.blk, place.evnt, rec.time);
    else
        editor().DelRest(place.trk, place.blk, place.evnt);
}

void RandomEdits::trkArrange() { editor().SetTrkArrange(anyTrk(), anyTrk()); }

void RandomEdits::styleNew()
{
    CStyleBlk* style = nullptr;
    editor().NewStyle(&style);
    const std::uint32_t top = anyTime();
    style->SetTime(top, top + dice().between(1, 4) * 960);
    style->SetSectionName(std::to_string(dice().below(1000)));
    if (dice().oneIn(2))
        editor().StyleNew(top, style);
    else
        editor().StyleRec(top, style);
}

void RandomEdits::styleEdit()
{
    const POSITION style = pick(dice(), editor().styles().blks());
    const POSITION other = pick(dice(), editor().styles().blks());
    if (!style) return;
    switch (dice().below(6)) {
    case 0: editor().StyleDel(style); break;
    case 1: editor().StyleCopy(style, anyTime()); break;
    case 2: editor().StyleMove(style, anyTime()); break;
    case 3: editor().StyleSize(style, anyTime()); break;
    case 4: editor().StyleDiv(style, anyTime()); break;
    default: editor().StyleApp(style, other); break;
    }
}

} // namespace tessaro::test
