// SPDX-License-Identifier: GPL-3.0-or-later
#include "realtime/rec/recorder.h"

#include "base/file_ops.h"
#include "base/strings.h"
#include "core/edit/undo_scope.h"
#include "core/ports/take_keeper.h"
#include "core/ports/user.h"
#include "realtime/play/smc.h"
#include "realtime/rec/blk_selection.h"
#include "realtime/rec/ring_intake.h"
#include "realtime/rec/step_input.h"
#include "realtime/rec/take.h"
#include "realtime/rec/take_journal.h"

#include <algorithm>
#include <optional>

namespace tessaro {

namespace {

std::vector<int> armedTracks(const Song& song)
{
    std::vector<int> tracks;
    for (int number = 1; number < trackCount; ++number)
        if (song.trk(number)->GetRec()) tracks.push_back(number);
    return tracks;
}

bool isWave(const Song& song, int number) noexcept { return song.trk(number)->GetType() == trktype::wave; }

} // namespace

struct Recorder::Parts {
    explicit Parts(const RecorderPorts& p)
        : ports(p)
        , intake(p.smc.loom())
        , journal(p.clock, p.disk ? *p.disk : ownDisk)
        , step(p.smc, p.strings)
    {
    }

    RecorderPorts ports;
    SystemFiles ownDisk;
    NoBlkSelection noSelection;
    BlkSelection* selection = &noSelection;
    TakeKeeper* keeper = nullptr;

    RecordSettings settings;
    RecState state = RecState::idle;
    RingIntake intake;
    TakeJournal journal;
    StepInput step;
    CEditor* editor = nullptr; ///< whose step a take holds open
    std::unique_ptr<Take> take;

    [[nodiscard]] std::optional<TextId> refusal(const Song& song) const;
    [[nodiscard]] std::string title() const { return std::string{ports.strings(TextId::undoRecording)}; }
    [[nodiscard]] TakeStart startAt(std::uint32_t tick, const LoopRange& loop) const;
    bool beginTake(const TakeStart& start);
    void takeIn(const LoomRingEntry& entry);
    void endTake(const LoopRange& loop);
    void tellJournal();
};

Recorder::Recorder(const RecorderPorts& ports) : m_parts(std::make_unique<Parts>(ports)) {}
Recorder::~Recorder() = default;

void Recorder::setSelection(BlkSelection* selection) noexcept
{
    m_parts->selection = selection ? selection : &m_parts->noSelection;
}

void Recorder::setPalette(StepPalette* palette) noexcept { m_parts->step.setPalette(palette); }

void Recorder::setKeeper(TakeKeeper* keeper) noexcept { m_parts->keeper = keeper; }

RecState Recorder::state() const noexcept { return m_parts->state; }

bool Recorder::IsStepRec() const noexcept { return IsRecButton() && m_parts->settings.mode == RecMode::step; }

const CBlk* Recorder::GetRecBlk(POSITION trk) const
{
    const Parts& p = *m_parts;
    if (p.state != RecState::recording) return nullptr;
    return p.take ? p.take->blkOn(trk) : p.step.GetRecBlk(trk);
}

std::uint32_t Recorder::topTick() const noexcept { return m_parts->take ? m_parts->take->topTick() : 0; }

std::uint32_t Recorder::lastTick() const noexcept { return m_parts->take ? m_parts->take->lastTick() : 0; }

// Arming and starting

bool Recorder::arm(MessageTarget& owner)
{
    Parts& p = *m_parts;
    const CEditor* editor = p.ports.smc.song();
    if (!editor || p.state != RecState::idle) return false;
    p.settings = RecordSettings::read(p.ports.profile);
    if (const std::optional<TextId> refusal = p.refusal(editor->song())) {
        p.ports.user.message(*refusal, MessageKind::warning);
        return false;
    }
    p.intake.skip();
    p.ports.smc.smcSetRecOwner(&owner);
    p.ports.smc.smcRecStart();
    p.state = RecState::armed;
    return true;
}

/// Why nothing can be recorded. Waves cannot be recorded as yet: in real time their tracks do not count.
std::optional<TextId> Recorder::Parts::refusal(const Song& song) const
{
    std::vector<int> tracks = armedTracks(song);
    const bool inTime = settings.mode == RecMode::realTime;
    if (inTime) std::erase_if(tracks, [&song](int number) { return isWave(song, number); });
    if (tracks.empty()) return TextId::armTrackFirst;
    if (!inTime && isWave(song, tracks.front())) return TextId::noStepInputOnWave;
    return std::nullopt;
}

bool Recorder::begin(std::uint32_t tick, const LoopRange& loop)
{
    Parts& p = *m_parts;
    if (p.state != RecState::armed) return false;
    const bool begun = IsStepRec() ? p.step.begin(tick, loop) : p.beginTake(p.startAt(tick, loop));
    if (begun)
        p.state = RecState::recording;
    else
        end(loop);
    return begun;
}

TakeStart Recorder::Parts::startAt(std::uint32_t tick, const LoopRange& loop) const
{
    const Smc& smc = ports.smc;
    TakeStart start;
    if (smc.song()) start.tracks = armedTracks(smc.song()->song());
    start.topTick = tick;
    start.settings = RecordSettings::read(ports.profile);
    start.loop = loop;
    start.inFilter = smc.inFilter();
    for (unsigned number = 0; number < start.dropController.size(); ++number)
        start.dropController[number] = smc.dropsController(number);
    return start;
}

bool Recorder::Parts::beginTake(const TakeStart& start)
{
    editor = ports.smc.song();
    if (!editor || editor->IsUndoOpen()) return false;
    const std::string path = keeper ? keeper->beginTake() : std::string{};
    if (editor->OpenUndoNode(title())) {
        ports.smc.takeEcho().clear();
        take = std::make_unique<Take>(*editor, start, Take::Audience{*selection, &ports.smc.takeEcho()});
        if (!take->tracks().empty()) {
            journal.begin(path, start);
            return true;
        }
        take.reset();
        editor->CloseUndoNode();
    }
    if (keeper) keeper->endTake();
    return false;
}

// While it runs

void Recorder::received(const LoomRingEntry& entry)
{
    Parts& p = *m_parts;
    if (p.intake.arrived(entry) && p.state == RecState::recording) p.takeIn(entry);
    p.ports.smc.smcIncRrdpt();
}

void Recorder::Parts::takeIn(const LoomRingEntry& entry)
{
    if (!take) {
        step.received(entry);
        return;
    }
    journal.entry(entry);
    take->received(entry);
}

void Recorder::passed(std::uint32_t tick, const LoopRange& loop)
{
    Parts& p = *m_parts;
    if (!p.take) return;
    p.journal.passed(tick);
    p.take->passed(tick, loop);
    p.tellJournal();
}

/// Once a take; the take goes on.
void Recorder::Parts::tellJournal()
{
    const FileError error = journal.takeError();
    if (error == FileError::none) return;
    std::string text{ports.strings(TextId::copyFailed)};
    if (const std::size_t at = text.find("%1"); at != std::string::npos)
        text.replace(at, 2, ports.strings(textOf(error)));
    ports.user.status(text);
}

// The end

void Recorder::end(const LoopRange& loop)
{
    Parts& p = *m_parts;
    if (p.state == RecState::idle) return;
    p.ports.smc.smcRecStop();
    const bool recording = p.state == RecState::recording;
    if (recording)
        p.intake.takeRest([&p](const LoomRingEntry& entry) { p.takeIn(entry); });
    else
        p.intake.skip();
    p.state = RecState::idle;
    if (p.take)
        p.endTake(loop);
    else if (recording)
        p.step.end();
}

void Recorder::Parts::endTake(const LoopRange& loop)
{
    const std::unique_ptr<Take> ended = std::move(take); // playing may go on behind the step, with the new blocks
    journal.end();
    const std::uint32_t stop = ports.smc.smcGetPlayCount();
    ended->finish(stop, stop > ended->lastTick() ? stop : loop.end);
    ports.smc.takeEcho().clear(); // from now on the blocks themselves are heard
    editor->CloseUndoNode();
    ended->select();
    tellJournal();
    if (keeper) keeper->endTake();
}

// Step input

std::uint32_t Recorder::stepTick() const noexcept { return m_parts->step.tick(); }

void Recorder::setStepTick(std::uint32_t tick) noexcept { m_parts->step.setTick(tick); }

void Recorder::rest()
{
    if (m_parts->state == RecState::recording && IsStepRec()) m_parts->step.rest();
}

// After a crash

bool Recorder::restore(const std::string& journal)
{
    Parts& p = *m_parts;
    CEditor* editor = p.ports.smc.song();
    TakeReplay replay = readTakeJournal(journal);
    if (!editor || p.state != RecState::idle || !replay.isTake()) return false;
    const UndoScope step(*editor, p.title());
    if (!step) return false;
    const TakeStart& start = replay.start();
    Take take(*editor, start, {p.noSelection});
    if (take.tracks().empty()) return false;
    std::uint32_t stop = start.topTick;
    for (TakeItem item; replay.next(item);) {
        stop = item.entry ? item.entry->time : item.tick;
        if (item.entry)
            take.received(*item.entry);
        else
            take.passed(item.tick, start.loop);
    }
    const bool wrapped = start.loop.on && stop < take.lastTick();
    take.finish(stop, wrapped ? start.loop.end : std::max(stop, take.lastTick()));
    return true;
}

} // namespace tessaro
