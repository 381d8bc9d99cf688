// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_gesture.h"

#include "core/edit/editor.h"
#include "views/tracks/trk_selection.h"

#include <algorithm>
#include <unordered_set>

namespace tessaro {

BlkGesture::BlkGesture(CEditor& editor, const TrkGeometry& geometry, TrkBlks& blks, TrkSelection& selection)
    : m_editor(editor)
    , m_geometry(geometry)
    , m_selection(selection)
    , m_finder(editor, geometry, blks, selection)
    , m_bars(editor.maps().meas())
{
    m_editor.addObserver(this);
}

BlkGesture::~BlkGesture() { m_editor.removeObserver(this); }

void BlkGesture::onHint(const HintObserver*, int code, CEditor*)
{
    if (code == hint::blkDel || code == hint::blkMove || code == hint::blkApp) abandon();
}

// The button goes down

BlkOutcome BlkGesture::press(QPoint at, Qt::KeyboardModifiers keys, EditTool tool)
{
    if (active()) cancel();
    m_from = m_now = m_geometry.toSong(at);
    m_keys = keys;
    m_moved = false;
    m_altKind.reset();
    m_before = m_selection.blks();
    return TrkGeometry::isRuler(at) ? pressRuler(at.y()) : pressRows(keys, tool);
}

BlkOutcome BlkGesture::pressRuler(int windowY)
{
    const QPoint at(m_from.x(), windowY);
    if (m_loop.left(m_geometry).contains(at)) {
        m_state = State::leftHandle;
    } else if (m_loop.right(m_geometry).contains(at)) {
        m_state = State::rightHandle;
    } else {
        m_state = State::spanning;
        return GoTo{snapped(m_now)};
    }
    return {};
}

BlkOutcome BlkGesture::pressRows(Qt::KeyboardModifiers keys, EditTool tool)
{
    const std::optional<BlkRef> hit = m_finder.hit(m_from);
    switch (tool) {
    case EditTool::eraser:
        m_selection.trkInitSel();
        m_state = State::erasing;
        eraseAt();
        return {};
    case EditTool::divide:
        if (!hit) return {};
        take(*hit, {});
        return DivideSelected{m_geometry.time(m_from.x())};
    case EditTool::join:
        if (!hit) return {};
        return JoinToNext{*hit};
    default: break;
    }
    if (hit) {
        pressBlk(*hit, keys, tool != EditTool::pencil && keys & Qt::AltModifier);
    } else if (tool != EditTool::pencil) {
        m_state = State::banding;
        selectBand();
    } else if (m_geometry.isRow(m_from.y())) {
        m_state = State::drawing;
    }
    return {};
}

void BlkGesture::pressBlk(const BlkRef& blk, Qt::KeyboardModifiers keys, bool withAlt)
{
    m_lead = blk;
    const bool ctrl = keys & Qt::ControlModifier;
    const bool shift = keys & Qt::ShiftModifier;
    const bool sizes = !ctrl && !shift && !withAlt && isEnd(blk, m_from);
    if (withAlt) m_altKind = ctrl ? DropKind::merge : DropKind::link;
    // Ctrl alone has to wait: a click selects more, a drag copies what it takes.
    if (withAlt || shift || !ctrl) take(blk, withAlt ? keys & Qt::ControlModifier : keys);
    m_state = sizes ? State::sizing : State::waiting;
}

/// Selects a block as a press with these keys does.
void BlkGesture::take(const BlkRef& blk, Qt::KeyboardModifiers keys)
{
    if (keys & Qt::ShiftModifier && !m_selection.empty()) {
        // The block that the range began with comes last, so that the next range begins with it, too.
        const BlkRef first = List<SelItem>::get(m_selection.trkGetTailSel())->ref();
        std::vector<BlkRef> range = m_finder.between(first, blk);
        std::erase(range, first);
        range.push_back(first);
        m_selection.setBlks(range);
    } else if (keys & (Qt::ControlModifier | Qt::ShiftModifier)) {
        m_selection.trkAddSel(blk.trk, blk.blk);
    } else if (!m_selection.contains(blk.blk)) {
        m_selection.setBlks({&blk, 1});
    }
}

bool BlkGesture::isEnd(const BlkRef& blk, QPoint at) const
{
    const QRect rect = m_finder.rect(blk);
    return List<CBlk>::get(blk.blk)->GetType() == blktype::real && rect.width() >= 3 * edgeWidth
        && at.x() > rect.right() - edgeWidth && rect.contains(at);
}

// The pointer moves

void BlkGesture::move(QPoint at, Qt::KeyboardModifiers keys)
{
    if (!active()) return;
    m_now = m_geometry.toSong(at);
    m_keys = keys;
    m_moved = m_moved || (m_now - m_from).manhattanLength() >= dragDistance;
    if ((m_state == State::waiting && m_moved) || (m_state == State::armed && m_now != m_from))
        beginDrag();
    else if (m_state == State::banding)
        selectBand();
    else if (m_state == State::erasing)
        eraseAt();
}

void BlkGesture::timeout()
{
    if (m_state == State::waiting) m_state = State::armed;
}

void BlkGesture::beginDrag()
{
    take(m_lead, {});
    m_state = State::dragging;
}

void BlkGesture::selectBand()
{
    const bool ctrl = m_keys & Qt::ControlModifier;
    const bool adds = ctrl || m_keys & Qt::ShiftModifier;
    std::vector<BlkRef> refs = adds ? m_before : std::vector<BlkRef>{};
    std::unordered_set<POSITION> known;
    for (const BlkRef& ref : refs) known.insert(ref.blk);
    std::unordered_set<POSITION> dropped;
    if (const std::optional<QRect> area = band())
        for (const BlkRef& ref : m_finder.inside(*area)) {
            if (!known.contains(ref.blk))
                refs.push_back(ref);
            else if (ctrl)
                dropped.insert(ref.blk);
        }
    std::erase_if(refs, [&](const BlkRef& ref) { return dropped.contains(ref.blk); });
    m_selection.setBlks(refs);
}

void BlkGesture::eraseAt()
{
    if (const std::optional<BlkRef> hit = m_finder.hit(m_now)) m_selection.trkAddSel(hit->trk, hit->blk);
}

// The button goes up

BlkOutcome BlkGesture::release(QPoint at, Qt::KeyboardModifiers keys)
{
    move(at, keys);
    BlkOutcome outcome;
    switch (m_state) {
    case State::spanning:
    case State::leftHandle:
    case State::rightHandle:
        if (m_moved && (m_state != State::spanning || snapped(m_from) != snapped(m_now))) {
            m_loop = loop();
            outcome = MakeLoop{m_loop.start, m_loop.end};
        }
        break;
    case State::waiting:
    case State::armed: click(keys); break;
    case State::dragging:
        if (const auto dropped = drop()) outcome = *dropped;
        break;
    case State::drawing: outcome = drawn(); break;
    case State::sizing:
        if (m_moved) outcome = EndBlkAt{m_lead, sizedEnd()};
        break;
    case State::erasing:
        if (!m_selection.empty()) outcome = EraseSelected{};
        break;
    default: break;
    }
    m_state = State::idle;
    return outcome;
}

void BlkGesture::click(Qt::KeyboardModifiers keys)
{
    if (m_altKind || keys & Qt::ShiftModifier) return;
    if (keys & Qt::ControlModifier)
        m_selection.toggle(m_lead);
    else
        m_selection.setBlks({&m_lead, 1});
}

void BlkGesture::cancel()
{
    if (!active()) return;
    m_state = State::idle;
    m_selection.setBlks(m_before);
}

// Places

std::uint32_t BlkGesture::snapped(QPoint at) const
{
    const std::uint32_t time = m_geometry.time(at.x());
    return m_keys & Qt::ShiftModifier ? m_bars.nearestBeat(time) : m_bars.nearest(time);
}

BlkShift BlkGesture::shift() const
{
    const QPoint by = m_now - m_from;
    const std::uint32_t top = m_editor.GetBlkTimeTop(m_lead.trk, m_lead.blk);
    const int x = std::max(m_geometry.x(top) + by.x(), TrkGeometry::leftMargin);
    return {std::int64_t{m_bars.nearest(m_geometry.time(x))} - top, m_geometry.snappedRows(by.y())};
}

DrawBlk BlkGesture::drawn() const
{
    const auto [left, right] = std::minmax({m_from.x(), m_now.x()});
    const std::uint32_t from = m_geometry.time(left);
    const std::uint32_t to = m_geometry.time(right);
    const bool beats = m_keys & Qt::ShiftModifier;
    const std::uint32_t top = beats ? m_bars.beatBefore(from) : m_bars.before(from);
    std::uint32_t end = beats ? m_bars.beatBefore(to) : m_bars.before(to);
    if (end < to || end == top) end = beats ? m_bars.beatAfter(to) : m_bars.after(to);
    return {m_geometry.track(m_from.y()), top, end};
}

std::uint32_t BlkGesture::sizedEnd() const
{
    const std::uint32_t top = m_editor.GetBlkTimeTop(m_lead.trk, m_lead.blk);
    const std::uint32_t end = snapped(m_now);
    return end > top ? end : m_bars.after(top);
}

// What there is to see

LoopHandles BlkGesture::loop() const
{
    switch (m_state) {
    case State::spanning: {
        if (!m_moved) return m_loop;
        const auto [start, end] = std::minmax({snapped(m_from), snapped(m_now)});
        return start < end ? LoopHandles{start, end} : m_loop;
    }
    case State::leftHandle: return {std::min(snapped(m_now), m_loop.end), m_loop.end};
    case State::rightHandle: return {m_loop.start, std::max(snapped(m_now), m_loop.start)};
    default: return m_loop;
    }
}

std::vector<QRect> BlkGesture::ghosts(const QRect& area) const
{
    std::vector<QRect> rects;
    const auto show = [&](const QRect& rect) {
        if (rect.intersects(area)) rects.push_back(rect);
    };
    if (const auto dropped = drop()) {
        POSITION pos = m_selection.trkGetHeadSel();
        for (const SelItem* item = nullptr; TrkSelection::trkGetNextSel(pos, &item);) {
            const CBlk& blk = *List<CBlk>::get(item->blk);
            const std::uint32_t top = dropped->shift.top(blk.GetTimeTop());
            const std::uint32_t end = tick::later(top, blk.GetTimeEnd() - blk.GetTimeTop());
            show(m_geometry.blkRect(dropped->shift.track(item->track()), top, end));
        }
    } else if (m_state == State::drawing) {
        const DrawBlk blk = drawn();
        show(m_geometry.blkRect(blk.track, blk.top, blk.end));
    } else if (m_state == State::sizing && m_moved) {
        show(
            m_geometry.blkRect(Song::numberOf(m_lead.trk), m_editor.GetBlkTimeTop(m_lead.trk, m_lead.blk), sizedEnd()));
    }
    return rects;
}

std::optional<DropSelected> BlkGesture::drop() const
{
    if (m_state != State::dragging || m_now == m_from) return std::nullopt;
    const BlkShift by = shift();
    if (by == BlkShift{}) return std::nullopt;
    const DropKind plain = m_keys & Qt::ControlModifier ? DropKind::copy : DropKind::move;
    return DropSelected{m_altKind.value_or(plain), by};
}

std::optional<QRect> BlkGesture::band() const
{
    if (m_state != State::banding || !m_moved) return std::nullopt;
    const auto [left, right] = std::minmax({m_from.x(), m_now.x()});
    const auto [top, bottom] = std::minmax({m_from.y(), m_now.y()});
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

std::optional<BlkRef> BlkGesture::blkAt(QPoint window) const
{
    return TrkGeometry::isRuler(window) ? std::nullopt : m_finder.hit(m_geometry.toSong(window));
}

BlkGesture::Zone BlkGesture::zoneAt(QPoint at, EditTool tool) const
{
    const QPoint song = m_geometry.toSong(at);
    if (TrkGeometry::isRuler(at)) {
        const QPoint place(song.x(), at.y());
        const bool handle = m_loop.left(m_geometry).contains(place) || m_loop.right(m_geometry).contains(place);
        return handle ? Zone::loopHandle : Zone::ruler;
    }
    const std::optional<BlkRef> blk = m_finder.hit(song);
    if (!blk) return Zone::row;
    const bool cuts = tool == EditTool::eraser || tool == EditTool::divide || tool == EditTool::join;
    return !cuts && isEnd(*blk, song) ? Zone::blkEnd : Zone::blk;
}

} // namespace tessaro
