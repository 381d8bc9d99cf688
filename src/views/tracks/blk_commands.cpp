// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_commands.h"

#include "core/edit/editor.h"
#include "core/edit/undo_scope.h"
#include "core/ports/hint_observer.h"
#include "views/text/ui_text.h"
#include "views/tracks/trk_selection.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <unordered_set>

namespace tessaro {
namespace {

CBlk& blkOf(const BlkRef& ref) { return *List<CBlk>::get(ref.blk); }
CTrk& trkOf(const BlkRef& ref) { return *List<CTrk>::get(ref.trk); }
bool isGhost(const BlkRef& ref) { return blkOf(ref).GetType() == blktype::ghost; }

/// The blocks that have come into the song since it was made.
class NewBlks final : public HintObserver {
public:
    explicit NewBlks(CEditor& editor) : m_editor(editor) { m_editor.addObserver(this); }
    ~NewBlks() override { m_editor.removeObserver(this); }
    NewBlks(const NewBlks&) = delete;
    NewBlks& operator=(const NewBlks&) = delete;

    std::vector<BlkRef> blks;

    void onHint(const HintObserver*, int code, CEditor*) override
    {
        if (code != hint::blkNew) return;
        BlkRef made;
        m_editor.GetHint(made.trk, made.blk);
        blks.push_back(made);
    }

private:
    CEditor& m_editor;
};

template <class Visit>
void forEachBlk(CEditor& editor, Visit&& visit)
{
    for (int number = 1; number < trackCount; ++number)
        if (CTrk* trk = editor.song().trk(number))
            for (CBlk* blk = trk->blocks().head(); blk; blk = List<CBlk>::next(blk)) visit(BlkRef{trk, blk});
}

/// Runs of at least two blocks of one track, each in the order of time.
std::vector<std::vector<BlkRef>> runsOf(std::vector<BlkRef> blks)
{
    std::stable_sort(blks.begin(), blks.end(), [](const BlkRef& a, const BlkRef& b) {
        return std::tuple(Song::numberOf(a.trk), blkOf(a).GetTimeTop())
             < std::tuple(Song::numberOf(b.trk), blkOf(b).GetTimeTop());
    });
    std::vector<std::vector<BlkRef>> runs;
    for (auto first = blks.begin(); first != blks.end();) {
        const auto end = std::find_if(first, blks.end(), [&](const BlkRef& ref) { return ref.trk != first->trk; });
        if (end - first > 1) runs.emplace_back(first, end);
        first = end;
    }
    return runs;
}

} // namespace

template <class Work>
bool BlkCommands::step(TextId title, Work&& work)
{
    const UndoScope scope(m_editor, m_text(title).toStdString());
    return scope && work();
}

BarLines BlkCommands::bars() const { return BarLines(m_editor.maps().meas()); }

void BlkCommands::note(TextId text) const { m_editor.user().status(m_text(text).toStdString()); }

bool BlkCommands::run(const BlkOutcome& outcome)
{
    if (const auto* dropped = std::get_if<DropSelected>(&outcome)) return drop(dropped->kind, dropped->shift);
    if (const auto* drawn = std::get_if<DrawBlk>(&outcome)) return create(drawn->track, drawn->top, drawn->end);
    if (const auto* sized = std::get_if<EndBlkAt>(&outcome)) return resize(sized->blk, sized->end);
    if (std::holds_alternative<EraseSelected>(outcome)) return remove();
    if (const auto* divided = std::get_if<DivideSelected>(&outcome)) return divide(divided->time);
    if (const auto* joined = std::get_if<JoinToNext>(&outcome)) return linkNext(joined->blk);
    return false;
}

// Moves and copies

bool BlkCommands::drop(DropKind kind, const BlkShift& shift)
{
    switch (kind) {
    case DropKind::move: return move(shift);
    case DropKind::copy: return place(TextId::undoBlockCopy, kind, shift, 1);
    case DropKind::link:
    case DropKind::relink: return place(TextId::undoBlockLink, kind, shift, 1);
    case DropKind::merge: return place(TextId::undoBlockMerge, kind, shift, 1);
    }
    return false;
}

bool BlkCommands::move(const BlkShift& shift)
{
    std::vector<BlkRef> blks = m_selection.blks();
    std::reverse(blks.begin(), blks.end());
    std::erase_if(blks, [&](const BlkRef& ref) { // those at the edges that cannot go further
        const int track = Song::numberOf(ref.trk);
        return shift.track(track) == track && shift.top(blkOf(ref).GetTimeTop()) == blkOf(ref).GetTimeTop();
    });
    if (m_isLocked() || blks.empty()) return false;
    return step(TextId::undoBlockMove, [&] {
        bool any = false;
        for (const BlkRef& ref : blks) {
            const POSITION trk2 = m_editor.GetTrkPos(shift.track(Song::numberOf(ref.trk)));
            if (m_editor.BlkMove(ref.trk, ref.blk, trk2, shift.top(blkOf(ref).GetTimeTop())))
                any = true;
            else
                note(TextId::blockTypeDiffers);
        }
        return any;
    });
}

bool BlkCommands::place(TextId title, DropKind kind, const BlkShift& shift, int times)
{
    const std::vector<BlkRef> blks = m_selection.blks();
    if (m_isLocked() || blks.empty() || shift == BlkShift{}) return false;
    return step(title, [&] {
        NewBlks made(m_editor);
        std::vector<BlkRef> into;
        bool goesOn = true;
        for (int n = 1; goesOn && n <= times; ++n) {
            const BlkShift by{shift.ticks * n, shift.rows * n};
            goesOn =
                std::all_of(blks.begin(), blks.end(), [&](const BlkRef& ref) { return placeOne(kind, ref, by, into); });
        }
        made.blks.insert(made.blks.end(), into.begin(), into.end());
        if (!made.blks.empty()) m_selection.setBlks(made.blks);
        return !made.blks.empty();
    });
}

/// False to leave the others alone. `into` gets what the block was merged into.
bool BlkCommands::placeOne(DropKind kind, const BlkRef& blk, const BlkShift& shift, std::vector<BlkRef>& into)
{
    const std::uint32_t top = shift.top(blkOf(blk).GetTimeTop());
    const std::uint32_t end = tick::later(top, blkOf(blk).GetTimeEnd() - blkOf(blk).GetTimeTop());
    const POSITION trk2 = m_editor.GetTrkPos(shift.track(Song::numberOf(blk.trk)));
    if (kind == DropKind::link || kind == DropKind::relink) {
        BlkRef source = blk;
        if (kind == DropKind::relink) m_editor.SrchSrcBlk(blk.trk, blk.blk, source.trk, source.blk);
        if (!m_editor.BlkGhost(source.trk, source.blk, trk2, top)) note(TextId::blockTypeDiffers);
        return true;
    }
    if (kind == DropKind::merge) {
        POSITION pos = m_selection.trkGetHeadSel();
        for (const SelItem* item = nullptr; TrkSelection::trkGetNextSel(pos, &item);) {
            const CBlk& other = blkOf(item->ref());
            if (item->blk == blk.blk || item->trk != trk2 || top >= other.GetTimeEnd() || end <= other.GetTimeTop())
                continue;
            if (m_editor.BlkMerge(blk.trk, blk.blk, trk2, item->blk, top)) into.push_back(item->ref());
            return true;
        }
    }
    return copy(blk, trk2, top);
}

bool BlkCommands::copy(const BlkRef& blk, POSITION trk2, std::uint32_t top)
{
    const std::uint8_t type = trkOf(blk).GetType();
    const CTrk& target = *List<CTrk>::get(trk2);
    if (target.GetType() == trktype::unused) m_editor.SetTrkType(trk2, type);
    if (target.GetType() != type) {
        m_editor.user().message(TextId::blockTypeDiffers, MessageKind::warning);
        return false;
    }
    m_editor.BlkCopy(blk.trk, blk.blk, trk2, top);
    return true;
}

bool BlkCommands::nudge(int steps, int rows)
{
    const auto all = span();
    if (!all) return false;
    for (const BlkRef& ref : m_selection.blks())
        if (const int track = Song::numberOf(ref.trk) + rows; track < 1 || track >= trackCount) return false;
    return move({std::int64_t{steps ? bars().stepped(all->from, steps) : all->from} - all->from, rows});
}

bool BlkCommands::nudgeTicks(int ticks)
{
    const auto all = span();
    return all && move({std::int64_t{tick::shifted(all->from, ticks)} - all->from, 0});
}

bool BlkCommands::duplicate(DropKind kind, int times)
{
    const auto all = span();
    if (!all) return false;
    const BarLines lines = bars();
    const bool onBars = lines.before(all->from) == all->from && lines.before(all->to) != all->to;
    const std::uint32_t behind = onBars ? lines.after(all->to) : all->to;
    const TextId title = kind == DropKind::relink ? TextId::undoBlockLink : TextId::undoBlockCopy;
    return place(title, kind, {std::int64_t{behind} - all->from, 0}, times);
}

// Blocks come, go and change

bool BlkCommands::create(int track, std::uint32_t top, std::uint32_t end)
{
    if (m_isLocked()) return false;
    return step(TextId::undoBlockNew, [&] {
        NewBlks made(m_editor);
        if (!m_editor.BlkNew(m_editor.GetTrkPos(track), top, end)) return false;
        m_selection.setBlks(made.blks);
        return true;
    });
}

bool BlkCommands::remove(TextId title)
{
    const std::vector<BlkRef> blks = m_selection.blks();
    if (m_isLocked() || blks.empty()) return false;
    return step(title, [&] {
        bool any = false;
        for (const BlkRef& ref : blks) // a ghost may have gone with its source
            if (m_selection.contains(ref.blk)) any = m_editor.BlkDel(ref.trk, ref.blk) || any;
        return any;
    });
}

bool BlkCommands::resize(const BlkRef& blk, std::uint32_t end)
{
    if (m_isLocked() || end == blkOf(blk).GetTimeEnd() || isGhost(blk)) return false;
    return step(TextId::undoBlockResize, [&] { return m_editor.BlkSize(blk.trk, blk.blk, end); });
}

bool BlkCommands::lengthen(int steps)
{
    if (m_isLocked() || !anyReal()) return false;
    const std::vector<BlkRef> blks = realOnes();
    const BarLines lines = bars();
    return step(TextId::undoBlockResize, [&] {
        for (const BlkRef& ref : blks) {
            const std::uint32_t least = lines.after(blkOf(ref).GetTimeTop());
            m_editor.BlkSize(ref.trk, ref.blk, std::max(least, lines.stepped(blkOf(ref).GetTimeEnd(), steps)));
        }
        return true;
    });
}

bool BlkCommands::rename(const BlkRef& blk, const std::string& name)
{
    if (m_isLocked() || blkOf(blk).GetName() == name) return false;
    return m_editor.BlkName(blk.trk, blk.blk, name);
}

bool BlkCommands::change(const BlkRef& blk, const BlkProperties& properties)
{
    if (m_isLocked()) return false;
    const POSITION trk2 = m_editor.GetTrkPos(properties.track);
    const bool moves = trk2 != blk.trk || properties.top != blkOf(blk).GetTimeTop();
    const bool sizes =
        !isGhost(blk) && properties.end - properties.top != blkOf(blk).GetTimeEnd() - blkOf(blk).GetTimeTop();
    if (!moves && !sizes) return rename(blk, properties.name); // which no step holds
    return step(moves ? TextId::undoBlockMove : TextId::undoBlockResize, [&] {
        rename(blk, properties.name);
        BlkRef now{trk2, blk.blk};
        if (moves && !m_editor.BlkMove(blk.trk, blk.blk, trk2, properties.top, &now.blk)) {
            note(TextId::blockTypeDiffers);
            return false;
        }
        return !sizes || m_editor.BlkSize(now.trk, now.blk, properties.end);
    });
}

// Division and union

bool BlkCommands::divide(std::uint32_t time)
{
    if (m_isLocked()) return false;
    const std::uint32_t at = bars().nearest(time);
    std::vector<BlkRef> blks = realOnes();
    std::erase_if(blks,
                  [at](const BlkRef& ref) { return blkOf(ref).GetTimeTop() >= at || blkOf(ref).GetTimeEnd() <= at; });
    if (blks.empty()) return false;
    return step(TextId::undoBlockSplit, [&] {
        bool any = false;
        for (const BlkRef& ref : blks) any = m_editor.BlkDiv(ref.trk, ref.blk, at) || any;
        return any;
    });
}

bool BlkCommands::link() { return !m_isLocked() && join(TextId::undoBlockJoin, realOnes()); }

bool BlkCommands::linkNext(const BlkRef& blk)
{
    if (m_isLocked()) return false;
    const BlkRef next{blk.trk, List<CBlk>::next(&blkOf(blk))};
    if (!next.blk) return false;
    m_selection.setBlks(std::array{blk, next});
    return link();
}

bool BlkCommands::merge() { return !m_isLocked() && join(TextId::undoBlockMerge, m_selection.blks()); }

bool BlkCommands::join(TextId title, std::vector<BlkRef> blks)
{
    const auto runs = runsOf(std::move(blks));
    if (runs.empty()) return false;
    return step(title, [&] {
        for (const auto& run : runs)
            for (const BlkRef& ref : run)
                if (isGhost(ref)) m_editor.BlkRealize(ref.trk, ref.blk);
        bool any = false;
        for (const auto& run : runs)
            for (std::size_t later = 1; later < run.size(); ++later)
                any = m_editor.BlkApp(run[later].trk, run[later].blk, run[0].trk, run[0].blk) || any;
        return any;
    });
}

bool BlkCommands::realise()
{
    const std::vector<BlkRef> blks = ghosts();
    if (m_isLocked() || blks.empty()) return false;
    return step(TextId::undoBlockRealize, [&] {
        bool any = false;
        for (const BlkRef& ref : blks) any = m_editor.BlkRealize(ref.trk, ref.blk) || any;
        return any;
    });
}

// The selection

bool BlkCommands::selectSources()
{
    std::vector<BlkRef> sources;
    for (const BlkRef& ref : ghosts()) {
        BlkRef source;
        if (m_editor.SrchSrcBlk(ref.trk, ref.blk, source.trk, source.blk)) sources.push_back(source);
    }
    if (sources.empty()) return false;
    m_selection.setBlks(sources);
    return true;
}

bool BlkCommands::selectSiblings()
{
    std::unordered_set<const CRealBlk*> reals;
    for (const BlkRef& ref : m_selection.blks()) reals.insert(blkOf(ref).GetRealBlk());
    std::vector<BlkRef> all;
    forEachBlk(m_editor, [&](const BlkRef& ref) {
        if (reals.contains(blkOf(ref).GetRealBlk())) all.push_back(ref);
    });
    const bool more = all.size() > m_selection.count();
    m_selection.setBlks(all);
    return more;
}

bool BlkCommands::selectAll()
{
    std::vector<BlkRef> all;
    forEachBlk(m_editor, [&](const BlkRef& ref) { all.push_back(ref); });
    m_selection.setBlks(all);
    return !all.empty();
}

bool BlkCommands::invert()
{
    std::vector<BlkRef> others;
    forEachBlk(m_editor, [&](const BlkRef& ref) {
        if (!m_selection.contains(ref.blk)) others.push_back(ref);
    });
    m_selection.setBlks(others);
    return !others.empty();
}

std::vector<BlkRef> BlkCommands::realOnes() const
{
    std::vector<BlkRef> blks = m_selection.blks();
    if (std::erase_if(blks, isGhost)) note(TextId::linkedBlocksLeftOut);
    return blks;
}

std::vector<BlkRef> BlkCommands::ghosts() const
{
    std::vector<BlkRef> blks = m_selection.blks();
    std::erase_if(blks, [](const BlkRef& ref) { return !isGhost(ref); });
    return blks;
}

bool BlkCommands::any(std::uint8_t type) const
{
    POSITION pos = m_selection.trkGetHeadSel();
    for (const SelItem* item = nullptr; TrkSelection::trkGetNextSel(pos, &item);)
        if (item->type() == type) return true;
    return false;
}

std::optional<TrkGeometry::Span> BlkCommands::span() const
{
    if (m_selection.empty()) return std::nullopt;
    TrkGeometry::Span all{tick::latest, 0};
    for (const BlkRef& ref : m_selection.blks()) {
        all.from = std::min(all.from, blkOf(ref).GetTimeTop());
        all.to = std::max(all.to, blkOf(ref).GetTimeEnd());
    }
    return all;
}

} // namespace tessaro
