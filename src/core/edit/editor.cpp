// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/editor.h"

#include "core/edit/load_steps.h"
#include "core/edit/signature_edit.h"

#include <algorithm>
#include <array>
#include <new>

namespace tessaro {

namespace {

constexpr std::uint8_t kindFormat1 = 2;
constexpr std::uint8_t kindNative = 4;
constexpr std::uint8_t kindNativeWave = 5;

constexpr std::array<std::uint8_t, 4> commonTime = {4, 2, 24, 8};
constexpr std::array<std::uint8_t, 3> tempo120 = {0x07, 0xA1, 0x20};

} // namespace

CEditor::CEditor(const EditorPorts& ports)
    : m_ports(ports)
    , m_maps(m_song, ports.score, ports.user)
    , m_history(*this, m_song.pool())
    , m_progress(ports.progress)
    , m_soloMute(m_song, m_styles, ports.transport, ports.waveOutput)
{
    if (!InitEditor()) m_ports.user.message(TextId::editorInitializeError, MessageKind::error);
}

CEditor::~CEditor() = default;

void CEditor::clearSong() noexcept
{
    m_history.clear();
    m_maps.clearMeas();
    m_maps.clearTempo();
    m_ports.score.clear();
    m_styles.clear();
    RemoveTempWave();
    InitTempWaveList();
    m_song.clear();
}

bool CEditor::InitEditor()
{
    m_modifyLock = false;
    m_song.namer().SetBlkNameNum(0);
    clearSong();
    if (!InitTrk() || !AddTs(0, commonTime.data()) || !AddTempo(0, tempo120.data())) return false;
    if (!InitMeasInfo() || !InitTimeInfo()) return false;
    InitUndoNode();
    InitStyle();
    return true;
}

bool CEditor::InitTrk()
{
    try {
        m_song.makeTracks();
        return true;
    } catch (const std::bad_alloc&) {
        m_ports.user.message(TextId::outOfMemory, MessageKind::error);
        return false;
    }
}

LoadResult CEditor::Load(const _EDT_FILE& file)
{
    m_fileLength = file.fileLength;
    m_song.namer().SetBlkNameNum(0);
    clearSong();
    if (!InitTrk()) return LoadResult::failed;
    try {
        const LoadResult result = m_ports.files.load(file, *this);
        if (result != LoadResult::failed) InitMeasInfo();
        return result;
    } catch (const std::bad_alloc&) {
        return LoadResult::failed;
    }
}

void CEditor::BlkSize(std::uint8_t kind)
{
    if (kind == kindFormat1) load_steps::snapFirstBlks(m_song, m_maps.meas());
    if (kind == kindNative || kind == kindNativeWave) load_steps::trimMaster(m_song);
}

void CEditor::PackSysex() { load_steps::packSysex(m_song); }

void CEditor::SetModify()
{
    m_ports.document.SetModifiedFlag(true);
    m_modifyLock = true;
}

void CEditor::StopSeq()
{
    if (!m_ports.transport.isPlaying()) return;
    m_ports.transport.stop();
    m_flags.playWasRunning = true;
}

void CEditor::PlaySeq()
{
    if (m_flags.playWasRunning && !m_ports.transport.isPlaying()) m_ports.transport.resume();
    m_flags.playWasRunning = false;
}

void CEditor::SetPrgDlg(std::uint32_t low, std::uint32_t high, std::string_view text)
{
    m_progress.open(low, high);
    m_progress.text(text);
}

void CEditor::SetPrgDlg(std::uint32_t low, std::uint32_t high, TextId text)
{
    SetPrgDlg(low, high, m_ports.strings ? (*m_ports.strings)(text) : std::string_view());
}

bool CEditor::NewBlk(int number, std::uint32_t time)
{
    CTrk* trk = m_song.trk(number);
    CRealBlk* real = trk ? NewAddTailRealBlk() : nullptr;
    return real && trk->NewAdd(time, real, blktype::real);
}

bool CEditor::AddTs(std::uint32_t time, const std::uint8_t* data)
{
    CRealBlk* master = m_song.masterReal();
    return master && master->AddTs(time, data);
}

bool CEditor::AddTempo(std::uint32_t time, const std::uint8_t* data)
{
    CRealBlk* master = m_song.masterReal();
    return master && master->AddTempo(time, data);
}

bool CEditor::NewAddTail(int trk, std::uint32_t index, _EDT_SMF& smf)
{
    CBlk* blk = nullptr;
    if (!GetBlk(trk, index, &blk) || !blk->GetRealBlk() || !blk->GetRealBlk()->NewAddTail(smf)) return false;
    blk->SetTimeEndCmp(blk->GetTimeTop() + blk->GetRealBlk()->events().tail()->GetTime());
    return true;
}

bool CEditor::NewAddTailEvnt(int trk, std::uint32_t index, const _EDT_EVNT& rec)
{
    CBlk* blk = nullptr;
    if (!GetBlk(trk, index, &blk) || !blk->GetRealBlk()) return false;
    CRealBlk& real = *blk->GetRealBlk();
    CEvnt* e = nullptr;
    real.New(&e);
    if (!e) return false;
    if (!e->Set(rec)) {
        real.Delete(e);
        return false;
    }
    real.AddTail(e);
    blk->SetTimeEndCmp(blk->GetTimeTop() + e->GetTime());
    return true;
}

bool CEditor::NewSortEvnt(int trk, std::uint32_t index, _EDT_SMF& smf)
{
    CBlk* blk = nullptr;
    const std::uint32_t time = smf.time;
    if (!GetBlk(trk, index, &blk) || !blk->GetRealBlk() || !blk->GetRealBlk()->NewSort(smf)) return false;
    blk->SetTimeEndCmp(blk->GetTimeTop() + time);
    return true;
}

std::uint32_t CEditor::GetTimeEndMstr() const noexcept
{
    const CRealBlk* master = m_song.masterReal();
    const CEvnt* last = master ? master->events().tail() : nullptr;
    return last ? last->GetTime() : 0;
}

std::uint32_t CEditor::GetTimeEndTrk() const noexcept
{
    std::uint32_t end = 0;
    for (const CTrk* trk = m_song.trk(1); trk; trk = List<CTrk>::next(trk))
        for (const CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk))
            end = std::max(end, blk->GetTimeEnd());
    return end;
}

std::uint32_t CEditor::GetTimeEnd() const { return std::max({GetTimeEndMstr(), GetTimeEndTrk(), GetTimeEndStyle()}); }

bool CEditor::GetNextMeasInfo(MapPos& pos, _EDT_MEASINFO& rec) const noexcept
{
    const MeasMap& meas = m_maps.meas();
    if (pos == 0 || pos > meas.count()) return false;
    rec = meas.node(pos - 1);
    pos = pos < meas.count() ? pos + 1 : 0;
    return true;
}

void CEditor::TimeToMeas(std::uint32_t time, std::uint32_t* last, MapPos& pos, _EDT_MEAS& meas) const noexcept
{
    m_maps.meas().TimeToMeas(time, last, pos, meas);
}

std::uint32_t CEditor::GetBeatTime(std::uint32_t time, std::uint32_t* beat) const noexcept
{
    return m_maps.meas().GetBeatTime(time, beat);
}

void CEditor::ChngTs(POSITION trk, POSITION blk, POSITION evnt, std::uint32_t top, std::uint8_t num, std::uint8_t den,
                     const CEvnt* event)
{
    if (event && signature_edit::isSignature(*event))
        signature_edit::changed(*this, trk, blk, evnt, top, num, den, *event);
}

void CEditor::InsTs(POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT&, const _EDT_MEASINFO& prev)
{
    if (evnt && signature_edit::isSignature(*List<CEvnt>::get(evnt)))
        signature_edit::inserted(*this, trk, blk, evnt, prev);
}

void CEditor::DelTs(POSITION trk, POSITION blk, POSITION evnt, const _EDT_EVNT& rec)
{
    if (evnt) signature_edit::remove(*this, trk, blk, evnt, rec);
}

void CEditor::UpdateTs(POSITION trk, POSITION blk, POSITION evnt, std::int64_t delta)
{
    if (evnt) signature_edit::shift(*this, trk, blk, evnt, delta);
}

void CEditor::DelDuplicateTs(POSITION trk, POSITION blk, POSITION evnt)
{
    if (evnt) signature_edit::removeDuplicates(*this, trk, blk, evnt);
}

void CEditor::ChngTs(POSITION, POSITION blk, POSITION evnt, std::int64_t delta)
{
    if (blk && evnt) List<CBlk>::get(blk)->ChngTs(evnt, delta);
}

} // namespace tessaro
