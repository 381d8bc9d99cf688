// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_painter.h"

#include "core/edit/editor.h"
#include "views/text/ui_text.h"
#include "views/theme/colours.h"
#include "views/theme/icons.h"
#include "views/tracks/blk_gesture.h"
#include "views/tracks/ruler_lines.h"
#include "views/tracks/trk_blks.h"
#include "views/tracks/trk_selection.h"

#include <QPainter>

#include <algorithm>
#include <bit>
#include <cmath>

namespace tessaro {
namespace {

constexpr std::size_t walkAPainting = 250000; ///< events
constexpr int leastPitches = 12;              ///< steps of two semitones that the height of a block spans
constexpr int labelRoom = 48;
constexpr int leastNamed = 32;  ///< width of a block that shows its name
constexpr int leastRounded = 8; ///< width of a block with round corners
constexpr int tallRow = 32;     ///< from here on a block has its name above the notes
constexpr int nameHeight = 15;
constexpr int chainSize = 11;
constexpr std::size_t mostNames = 4096; ///< that are kept

QFont smallFont(const QFont& font)
{
    QFont small = font;
    small.setPointSizeF(font.pointSizeF() * 0.8);
    return small;
}

} // namespace

TrkPainter::TrkPainter(const Parts& parts) : m_parts(parts), m_shares(parts.editor) { sounding.fill(true); }

void TrkPainter::paint(QPainter& painter, const QRect& area, const Look& look)
{
    prepare(look);
    m_pictures.begin(walkAPainting);
    m_shares.refresh();
    refreshSiblings();
    painter.fillRect(area, look.palette.base());
    const QRect rows = area.intersected(QRect(area.left(), TrkGeometry::rulerHeight, area.width(), 1 << 20));
    if (!rows.isEmpty()) {
        painter.save();
        painter.setClipRect(rows);
        paintRows(painter, rows, look);
        paintBlks(painter, rows, look);
        for (const TrkTake& take : takes) paintTake(painter, take, rows, look);
        paintGesture(painter, rows, look);
        painter.restore();
    }
    if (area.top() < TrkGeometry::rulerHeight) paintRuler(painter, area, look);
    paintLoop(painter, look);
    paintPosition(painter, look);
}

/// What is drawn many times is made once.
void TrkPainter::prepare(const Look& look)
{
    const QFont small = smallFont(look.font);
    if (small != m_small || m_names.size() > mostNames) m_names.clear();
    m_small = small;
    const QColor ink = look.palette.color(QPalette::Text);
    if (ink == m_ink && !m_chain.isNull() && qFuzzyCompare(m_chain.devicePixelRatio(), look.pixelRatio)) return;
    m_ink = ink;
    m_chain = QPixmap(QSize(chainSize, chainSize) * look.pixelRatio);
    m_chain.setDevicePixelRatio(look.pixelRatio);
    m_chain.fill(Qt::transparent);
    QPainter painter(&m_chain);
    m_parts.icons.draw(painter, QStringLiteral("link"), QRectF(0, 0, chainSize, chainSize), ink);
}

const TrkPainter::Name& TrkPainter::nameOf(const CBlk& blk)
{
    const auto [at, isNew] = m_names.try_emplace(blk.GetName());
    if (isNew) {
        at->second.text.setText(songText(blk.GetName()));
        at->second.text.setTextFormat(Qt::PlainText);
        at->second.text.prepare({}, m_small);
        at->second.width = static_cast<int>(std::ceil(at->second.text.size().width()));
    }
    return at->second;
}

// Rows

void TrkPainter::paintRows(QPainter& painter, const QRect& area, const Look& look)
{
    const TrkGeometry& g = m_parts.geometry;
    const QColor base = look.palette.color(QPalette::Base);
    const QColor line = blend(look.palette.color(QPalette::Mid), base, 0.55);
    const QColor faint = blend(look.palette.color(QPalette::Mid), base, 0.25);
    const int first = g.firstTrack(area);
    const int last = g.lastTrack(area);
    const auto top = [&](int track) { return g.y(track) - g.scrollY(); };
    const int bottom = top(TrkGeometry::rows + 1);
    if (currentTrack >= first && currentTrack <= last)
        painter.fillRect(area.left(), top(currentTrack), area.width(), g.rowHeight(),
                         blend(look.palette.color(QPalette::Highlight), base, 0.08));
    if (loopOn) {
        const LoopHandles loop = m_parts.gesture.loop();
        const int left = std::max(g.windowX(loop.start), area.left());
        const int right = std::min(g.windowX(loop.end), area.right() + 1);
        if (left < right)
            painter.fillRect(left, area.top(), right - left, area.height(),
                             blend(look.palette.color(QPalette::Highlight), base, 0.06));
    }
    for (const RulerLine& mark : rulerLines(g, m_parts.editor.maps().meas(), area, labelRoom))
        painter.fillRect(mark.x, area.top(), 1, std::min(area.bottom() + 1, bottom) - area.top(),
                         mark.kind == RulerLine::Kind::labelled ? line : faint);
    for (int track = first; track <= last; ++track)
        painter.fillRect(area.left(), top(track) + g.rowHeight() - 1, area.width(), 1, line);
}

QColor TrkPainter::colourOf(int track, const Look& look) const
{
    if (!sounding[static_cast<std::size_t>(track)])
        return blend(look.palette.color(QPalette::PlaceholderText), look.palette.color(QPalette::Base), 0.5);
    const int other = colours[static_cast<std::size_t>(track - 1) % colours.size()];
    return trackColour(other > 0 ? other : track, look.palette);
}

void TrkPainter::refreshSiblings()
{
    if (!std::exchange(m_siblingsStale, false)) return;
    m_siblings.clear();
    for (const BlkRef& ref : m_parts.selection.blks())
        if (const CRealBlk* real = List<CBlk>::get(ref.blk)->GetRealBlk(); m_shares.isShared(real))
            m_siblings.insert(real);
}

// Blocks

void TrkPainter::paintBlks(QPainter& painter, const QRect& area, const Look& look)
{
    const TrkGeometry& g = m_parts.geometry;
    const TrkGeometry::Span span = g.times(area.adjusted(-TrkGeometry::leastBlkWidth, 0, 1, 0));
    for (int track = g.firstTrack(area); track <= g.lastTrack(area); ++track) {
        const CTrk* trk = m_parts.editor.song().trk(track);
        if (!trk) continue;
        const QColor colour = colourOf(track, look);
        for (const CBlk* blk : m_parts.blks.meeting(*trk, span.from, span.to)) {
            if (std::ranges::find(takes, blk, &TrkTake::blk) != takes.end()) continue;
            const QRect place = g.toWindow(g.blkRect(track, blk->GetTimeTop(), blk->GetTimeEnd()));
            paintBlk(painter,
                     {*blk, place, colour, m_parts.selection.contains(const_cast<CBlk*>(blk)),
                      m_shares.isShared(blk->GetRealBlk()), trk->GetType() == trktype::wave},
                     area, look);
        }
    }
}

void TrkPainter::paintBlk(QPainter& painter, const Blk& blk, const QRect& area, const Look& look)
{
    const QColor base = look.palette.color(QPalette::Base);
    const QColor accent = look.palette.color(QPalette::Highlight);
    const bool ghost = blk.blk.GetType() == blktype::ghost;
    const QColor plate = blend(blk.colour, base, blk.selected ? 0.45 : ghost ? 0.14 : 0.26);
    // Only what the area shows: edges out of sight are a little further away, not far.
    const QRect place = blk.place.intersected(area.adjusted(-16, -64, 16, 64)).adjusted(0, 1, 0, -2);
    const bool sibling = !blk.selected && blk.linked && m_siblings.contains(blk.blk.GetRealBlk());
    const QColor edge = blk.selected || sibling ? accent : blend(blk.colour, base, 0.75);
    if (blk.place.width() < leastRounded) {
        painter.fillRect(place, blend(blk.colour, base, 0.6));
        if (blk.selected) painter.fillRect(place.adjusted(0, 0, 0, 3 - place.height()), accent);
        return;
    }
    if (blk.selected || blk.linked) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(edge, blk.selected ? 2 : 1, blk.linked ? Qt::DashLine : Qt::SolidLine));
        painter.setBrush(plate);
        const double inset = blk.selected ? 1 : 0.5;
        painter.drawRoundedRect(QRectF(place).adjusted(inset, inset, -inset, -inset), 3, 3);
        painter.setRenderHint(QPainter::Antialiasing, false);
    } else { // the many: quicker, and hardly to be told from it
        painter.fillRect(place.adjusted(1, 0, -1, 0), edge);
        painter.fillRect(place.adjusted(0, 1, 0, -1), edge);
        painter.fillRect(place.adjusted(1, 1, -1, -1), plate);
    }

    const bool tall = m_parts.geometry.rowHeight() >= tallRow;
    const bool named = blk.place.width() >= leastNamed;
    QRect body = blk.place.adjusted(1, 3, -1, -4);
    if (tall && named) body.setTop(body.top() + nameHeight - 2);
    if (blk.wave)
        painter.fillRect(body.intersected(area).adjusted(1, body.height() / 3, -1, -body.height() / 3),
                         blend(blk.colour, base, 0.6));
    else
        paintNotes(painter, blk.blk, body, area, {blend(blk.colour, base, blk.selected || tall ? 1 : 0.8), plate},
                   look.pixelRatio);
    if (named) paintName(painter, blk, plate);
}

/// With the chain of linked blocks; both on a plate that keeps them apart from the notes. What does not fit is cut.
void TrkPainter::paintName(QPainter& painter, const Blk& blk, const QColor& plate)
{
    const int left = std::max(blk.place.left(), 4); // in sight while the block is
    QRect line(left + 4, blk.place.top() + 2, blk.place.right() - left - 8, nameHeight);
    if (m_parts.geometry.rowHeight() < tallRow) line.setHeight(blk.place.height() - 5);
    if (line.width() < leastNamed / 2) return;
    const Name& name = nameOf(blk.blk);
    const int chain = blk.linked ? chainSize + 2 : 0;
    const bool fits = name.width + chain <= line.width();
    QColor back = plate;
    back.setAlphaF(0.8F);
    painter.fillRect(QRect(line.left() - 1, line.top(), std::min(name.width + chain, line.width()) + 3, line.height()),
                     back);
    if (blk.linked) painter.drawPixmap(line.left(), line.center().y() - chainSize / 2, m_chain);
    painter.setFont(m_small);
    painter.setPen(m_ink);
    const QPointF at(line.left() + chain, line.top() + (line.height() - name.text.size().height()) / 2);
    if (fits) {
        painter.drawStaticText(at, name.text);
        return;
    }
    painter.save();
    painter.setClipRect(line, Qt::IntersectClip);
    painter.drawStaticText(at, name.text);
    painter.restore();
}

/// A column of device pixels at a time.
void TrkPainter::paintNotes(QPainter& painter, const CBlk& blk, const QRect& body, const QRect& area, const Inks& inks,
                            double pixelRatio)
{
    const QRect seen = body.intersected(area.adjusted(0, -256, 0, 256));
    const BlkPicture* picture = blk.GetRealBlk() ? m_pictures.find(*blk.GetRealBlk()) : nullptr;
    if (!picture || !picture->pitches() || seen.width() <= 0 || body.height() < 4) return;

    const int width = static_cast<int>(seen.width() * pixelRatio);
    const int height = static_cast<int>(body.height() * pixelRatio);
    if (m_notes.width() < width || m_notes.height() < height)
        m_notes = QImage(std::max(width, m_notes.width()), std::max(height, m_notes.height()), QImage::Format_RGB32);
    int low = std::countr_zero(picture->pitches());
    const int high = 63 - std::countl_zero(picture->pitches());
    const int range = std::max(high - low + 1, leastPitches);
    low -= (range - (high - low + 1)) / 2; // a narrow range stands in the middle
    const int thickness = std::max(height / range, static_cast<int>(pixelRatio));
    const auto stride = m_notes.bytesPerLine() / 4;
    auto* pixels = reinterpret_cast<QRgb*>(m_notes.bits());
    for (int y = 0; y < height; ++y) std::fill_n(pixels + y * stride, width, inks.plate.rgb());

    const TrkGeometry& g = m_parts.geometry;
    const double ticksAColumn = g.zoom() / pixelRatio;
    const double start = (seen.left() - g.windowX(blk.GetTimeTop())) * g.zoom();
    const QRgb ink = inks.note.rgb();
    std::array<int, 64> lines{}; // where each pitch begins
    for (int bit = 0; bit < 64; ++bit)
        lines[static_cast<std::size_t>(bit)] = (height - thickness) * (range - 1 - (bit - low)) / (range - 1);
    for (int x = 0; x < width; ++x) {
        const double from = std::max(start + x * ticksAColumn, 0.0);
        auto bits = picture->pitches(static_cast<std::uint32_t>(from),
                                     static_cast<std::uint32_t>(std::max(from + ticksAColumn, from + 1)));
        for (; bits; bits &= bits - 1) {
            const int y = lines[static_cast<std::size_t>(std::countr_zero(bits))];
            for (int line = y; line < y + thickness; ++line) pixels[line * stride + x] = ink;
        }
    }
    painter.drawImage(QRectF(seen.left(), body.top(), width / pixelRatio, height / pixelRatio), m_notes,
                      QRectF(0, 0, width, height));
}

void TrkPainter::paintTake(QPainter& painter, const TrkTake& take, const QRect& area, const Look& look)
{
    const TrkGeometry& g = m_parts.geometry;
    const QRect place = g.toWindow(g.blkRect(take.track, take.blk->GetTimeTop(), take.end));
    if (!place.intersects(area)) return;
    const QColor red = recordColour(look.palette);
    const QColor base = look.palette.color(QPalette::Base);
    const QRect shown = place.intersected(area.adjusted(-16, -64, 16, 64)).adjusted(0, 1, 0, -2);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(blend(red, base, 0.6));
    const QColor plate = blend(red, base, 0.18);
    painter.setBrush(plate);
    painter.drawRoundedRect(QRectF(shown).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter.setRenderHint(QPainter::Antialiasing, false);
    m_pictures.setStale(take.blk->GetRealBlk()); // no hint tells of what comes in
    paintNotes(painter, *take.blk, place.adjusted(1, 3, -1, -4), area, {red, plate}, look.pixelRatio);
}

void TrkPainter::paintGesture(QPainter& painter, const QRect& area, const Look& look) const
{
    const TrkGeometry& g = m_parts.geometry;
    QColor accent = look.palette.color(QPalette::Highlight);
    QColor glass = accent;
    glass.setAlphaF(0.15F);
    painter.setBrush(glass);
    painter.setPen(QPen(accent, 1, Qt::DashLine));
    for (const QRect& ghost : m_parts.gesture.ghosts(g.toSong(area)))
        painter.drawRect(g.toWindow(ghost).intersected(area.adjusted(-16, -64, 16, 64)).adjusted(0, 1, -1, -3));
    if (const auto band = m_parts.gesture.band()) {
        painter.setPen(accent);
        painter.drawRect(g.toWindow(*band).intersected(area.adjusted(-16, -16, 16, 16)).adjusted(0, 0, -1, -1));
    }
}

// Ruler

void TrkPainter::paintRuler(QPainter& painter, const QRect& area, const Look& look) const
{
    constexpr int height = TrkGeometry::rulerHeight;
    const TrkGeometry& g = m_parts.geometry;
    const QRect ruler(area.left(), 0, area.width(), height);
    painter.fillRect(ruler, look.palette.window());
    painter.fillRect(area.left(), height - 1, area.width(), 1, look.palette.mid());
    painter.setFont(m_small);
    painter.setPen(look.palette.color(QPalette::PlaceholderText));
    for (const RulerLine& mark : rulerLines(g, m_parts.editor.maps().meas(), ruler, labelRoom)) {
        const bool labelled = mark.kind == RulerLine::Kind::labelled;
        const int length = labelled ? height - 4 : mark.kind == RulerLine::Kind::bar ? 6 : 3;
        painter.fillRect(mark.x, height - 1 - length, 1, length,
                         look.palette.color(labelled ? QPalette::PlaceholderText : QPalette::Dark));
        if (labelled)
            painter.drawText(QRect(mark.x + 4, 0, labelRoom, height - 7), Qt::AlignLeft | Qt::AlignVCenter,
                             QString::number(mark.measure));
    }
    if (location != position) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(look.palette.color(QPalette::Highlight), 1.2));
        painter.setBrush(look.palette.window());
        const double x = g.windowX(location) + 0.5;
        const QPointF flag[] = {{x, 3.0}, {x - 7, 6.5}, {x, 10.0}};
        painter.drawPolygon(flag, 3);
        painter.drawLine(QPointF(x, 3), QPointF(x, height - 2));
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
}

void TrkPainter::paintLoop(QPainter& painter, const Look& look) const
{
    const TrkGeometry& g = m_parts.geometry;
    const LoopHandles loop = m_parts.gesture.loop();
    const QColor quiet = look.palette.color(QPalette::PlaceholderText);
    const QColor colour =
        loopOn ? look.palette.color(QPalette::Highlight) : blend(quiet, look.palette.color(QPalette::Window), 0.6);
    const int left = std::max(g.windowX(loop.start), -16);
    const int right = std::min(g.windowX(loop.end), g.size().width() + 16);
    constexpr int height = TrkGeometry::rulerHeight;
    if (left < right) painter.fillRect(left, height - 4, right - left, 3, colour);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    // They stay in the ruler when the rows scroll.
    const QRectF l = loop.left(g).translated(g.windowX(loop.start) - g.x(loop.start), 0);
    const QRectF r = loop.right(g).translated(g.windowX(loop.end) - g.x(loop.end), 0);
    const QPointF leftHandle[] = {l.topRight(), l.bottomRight(), l.bottomLeft()};
    const QPointF rightHandle[] = {r.topLeft(), r.bottomLeft(), r.bottomRight()};
    painter.drawPolygon(leftHandle, 3);
    painter.drawPolygon(rightHandle, 3);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

QRect TrkPainter::strip(std::uint32_t tick) const
{
    return {m_parts.geometry.windowX(tick) - 8, 0, 17, m_parts.geometry.size().height()};
}

void TrkPainter::paintPosition(QPainter& painter, const Look& look) const
{
    const QColor accent = look.palette.color(QPalette::Highlight);
    const int x = m_parts.geometry.windowX(position);
    if (x < -8 || x > m_parts.geometry.size().width() + 8) return;
    painter.fillRect(x, TrkGeometry::rulerHeight - 8, 2, m_parts.geometry.size().height(), accent);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent);
    const QPointF head[] = {{x - 5.0, 4.0}, {x + 7.0, 4.0}, {x + 1.0, 14.0}};
    painter.drawConvexPolygon(head, 3);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

// Changes

void TrkPainter::follow(int code, const CEditor& editor)
{
    m_pictures.follow(code, editor);
    if (m_shares.follow(code, editor)) m_siblingsStale = true;
}

void TrkPainter::songReplaced()
{
    m_pictures.clear();
    m_shares.setAllStale();
    m_siblingsStale = true;
    takes.clear();
    position = location = 0;
}

int TrkPainter::links(const CBlk& blk)
{
    m_shares.refresh();
    return m_shares.count(blk.GetRealBlk());
}

bool TrkPainter::isEmpty()
{
    m_shares.refresh();
    return m_shares.empty();
}

} // namespace tessaro
