// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_scroll_area.h"

#include "core/edit/editor.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaro {
namespace {

constexpr int rowsAWheelStep = 3;
constexpr int wheelPixels = 120; ///< to the side
constexpr int edge = 16;         ///< pixels from the border where a drag scrolls

} // namespace

TrkScrollArea::TrkScrollArea(CEditor& editor, QWidget* parent) : QAbstractScrollArea(parent), m_editor(editor)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    connect(horizontalScrollBar(), &QAbstractSlider::actionTriggered, this, [this](int action) { stepPages(action); });
}

BarLines TrkScrollArea::bars() const { return BarLines(m_editor.maps().meas()); }

int TrkScrollArea::measures(std::uint32_t tick) const
{
    return static_cast<int>(std::min<std::uint32_t>(bars().number(tick), MeasScroll::most));
}

// Painting

void TrkScrollArea::stale()
{
    if (std::exchange(m_stale, true)) return;
    viewport()->update();
}

void TrkScrollArea::paintEvent(QPaintEvent* event)
{
    m_stale = false;
    if (m_editor.IsPrgDlg()) return; // the song may stand between two states: the last picture stays
    QPainter painter(viewport());
    paint(painter, event->rect());
}

void TrkScrollArea::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) stale();
}

// Scroll bars

void TrkScrollArea::resizeEvent(QResizeEvent*)
{
    m_geometry.setSize(viewport()->size());
    m_geometry.setScrollY(m_geometry.scrollY());
    showScroll();
}

void TrkScrollArea::showTop()
{
    m_scroll.reset(0);
    m_geometry.setOrigin(0);
    m_geometry.setScrollY(0);
    scrolled();
}

void TrkScrollArea::showScroll()
{
    m_showingScroll = true;
    m_scroll.setSong(measures(m_editor.GetTimeEnd()) + 1);
    m_scroll.follow(measures(m_geometry.origin()));
    QScrollBar& across = *horizontalScrollBar();
    across.setRange(0, m_scroll.range());
    across.setPageStep(std::max(1, measures(m_geometry.times().to) - m_scroll.at()));
    across.setValue(m_scroll.at());
    QScrollBar& down = *verticalScrollBar();
    down.setRange(0, m_geometry.mostScrollY());
    down.setPageStep(m_geometry.size().height() - TrkGeometry::rulerHeight);
    down.setSingleStep(m_geometry.rowHeight());
    down.setValue(m_geometry.scrollY());
    m_showingScroll = false;
}

void TrkScrollArea::scrolled()
{
    showScroll();
    stale();
}

void TrkScrollArea::stepPages(int action)
{
    QScrollBar& bar = *horizontalScrollBar();
    const auto step = [&](int measure) {
        bar.setMaximum(m_scroll.range());
        bar.setSliderPosition(measure);
    };
    switch (action) {
    case QAbstractSlider::SliderSingleStepAdd: step(m_scroll.lines(1)); break;
    case QAbstractSlider::SliderSingleStepSub: step(m_scroll.lines(-1)); break;
    case QAbstractSlider::SliderPageStepAdd: step(m_scroll.pages(1, bar.pageStep())); break;
    case QAbstractSlider::SliderPageStepSub: step(m_scroll.pages(-1, bar.pageStep())); break;
    default: step(m_scroll.thumb(bar.sliderPosition()));
    }
}

void TrkScrollArea::scrollContentsBy(int, int)
{
    if (m_showingScroll) return;
    const int measure = horizontalScrollBar()->value();
    if (measure != m_scroll.at() || measure != measures(m_geometry.origin()))
        m_geometry.setOrigin(bars().top(static_cast<std::uint32_t>(measure)));
    m_geometry.setScrollY(verticalScrollBar()->value());
    scrolled();
}

// Other ways to a place

void TrkScrollArea::setOrigin(std::int64_t tick)
{
    m_geometry.setOrigin(
        static_cast<std::uint32_t>(std::clamp<std::int64_t>(tick, 0, bars().top(MeasScroll::most - 1))));
    scrolled();
}

void TrkScrollArea::turnPageTo(std::uint32_t tick)
{
    const int x = m_geometry.windowX(tick);
    if (x < 0 || x >= m_geometry.size().width() - 1) setOrigin(m_geometry.pageAt(bars().before(tick), tick));
}

void TrkScrollArea::reveal(const QRect& song)
{
    m_geometry.reveal(song);
    scrolled();
}

void TrkScrollArea::reveal(int track)
{
    const int x = m_geometry.toSong(QPoint(0, 0)).x();
    reveal(QRect(x + TrkGeometry::leftMargin, m_geometry.y(track), 1, m_geometry.rowHeight()));
}

bool TrkScrollArea::scrollAtEdge(QPoint at, bool rows)
{
    const auto beyond = [](int place, int low, int high) {
        return std::clamp(place < low ? place - low : std::max(place - high, 0), -2 * edge, 2 * edge);
    };
    const QSize size = m_geometry.size();
    const int dx = beyond(at.x(), edge, size.width() - edge);
    const int dy = rows ? beyond(at.y(), TrkGeometry::rulerHeight + edge / 2, size.height() - edge) : 0;
    if (dx == 0 && dy == 0) return false;
    m_geometry.setScrollY(m_geometry.scrollY() + dy);
    setOrigin(m_geometry.origin() + std::llround(dx * m_geometry.zoom()));
    return true;
}

void TrkScrollArea::startPan(QPoint at)
{
    m_pan = Pan{at, m_geometry.origin(), m_geometry.scrollY()};
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void TrkScrollArea::pan(QPoint at)
{
    const QPoint moved = at - m_pan->from;
    m_geometry.setScrollY(m_pan->scrollY - moved.y());
    setOrigin(m_pan->origin - std::llround(moved.x() * m_geometry.zoom()));
}

// Zoom

void TrkScrollArea::zoomed()
{
    scrolled();
    if (onZoom) onZoom();
}

void TrkScrollArea::setZoom(double ticksAPixel)
{
    m_geometry.setZoom(ticksAPixel);
    scrolled();
}

void TrkScrollArea::zoomBy(double steps)
{
    m_geometry.zoomBy(steps, m_geometry.size().width() / 2);
    zoomed();
}

void TrkScrollArea::setRowHeight(int pixels)
{
    m_geometry.setRowHeight(pixels);
    zoomed();
}

void TrkScrollArea::zoomTo(TrkGeometry::Span span)
{
    m_geometry.fit(span.from, span.to);
    zoomed();
}

void TrkScrollArea::zoomToSong() { zoomTo({0, std::max(m_editor.GetTimeEnd(), bars().top(4))}); }

void TrkScrollArea::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const QPoint turned = event->angleDelta();
    const double steps = (turned.y() ? turned.y() : turned.x()) / 120.0;
    if (event->modifiers() & Qt::ControlModifier) {
        m_geometry.zoomBy(steps, static_cast<int>(event->position().x()));
        zoomed();
    } else if ((event->modifiers() & Qt::ShiftModifier) || std::abs(turned.x()) > std::abs(turned.y())) {
        setOrigin(m_geometry.origin() - std::llround(steps * wheelPixels * m_geometry.zoom()));
    } else {
        m_geometry.setScrollY(m_geometry.scrollY() - static_cast<int>(steps * rowsAWheelStep * m_geometry.rowHeight()));
        scrolled();
    }
}

} // namespace tessaro
