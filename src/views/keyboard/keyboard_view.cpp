// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/keyboard/keyboard_view.h"

#include "views/keyboard/typed_keyboard.h"
#include "views/keyboard/typed_layout.h"
#include "views/theme/colours.h"

#include <QMouseEvent>
#include <QPainter>

namespace tessaro {
namespace {

constexpr int mouse = -1; ///< its number among the keys
constexpr double widestKey = 44;
const QColor ivory(0xF7F8FA); // piano keys are light and dark under every palette
const QColor ebony(0x23272E);
const QColor ivoryText(0x4A535E);
const QColor ebonyText(0xC4CBD3);

} // namespace

KeyboardView::KeyboardView(TypedKeyboard& keyboard, QWidget* parent) : QWidget(parent), m_keyboard(keyboard)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void KeyboardView::setHasKeys(bool has)
{
    if (has == m_hasKeys) return;
    m_hasKeys = has;
    update();
}

PianoKeys KeyboardView::keys() const
{
    constexpr int whites = 17;
    const double wide = std::min<double>(width() - 1, whites * widestKey);
    return {typedSemitones, QRectF(0.5, 0.5, wide, height() - 1)};
}

void KeyboardView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const PianoKeys piano = keys();
    for (const bool black : {false, true})
        for (int semitone = 0; semitone < typedSemitones; ++semitone)
            if (PianoKeys::isBlack(semitone) == black) paintKey(painter, semitone, piano.key(semitone));
}

void KeyboardView::paintKey(QPainter& painter, int semitone, const QRectF& place) const
{
    const bool black = PianoKeys::isBlack(semitone);
    const bool lit = m_keyboard.sounds(semitone);
    const QColor accent = palette().color(QPalette::Highlight);
    painter.setPen(QPen(blend(ebony, ivory, 0.45), 1));
    painter.setBrush(lit ? accent : black ? ebony : ivory);
    painter.drawRoundedRect(black ? place : place.adjusted(0.5, 0, -0.5, 0), 3, 3);

    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    painter.setFont(small);
    QColor text = lit ? palette().color(QPalette::HighlightedText) : black ? ebonyText : ivoryText;
    if (!m_hasKeys && !lit) text.setAlphaF(0.35F);
    painter.setPen(text);
    const QString faces = keysOfSemitone(semitone);
    const double line = QFontMetricsF(small).height();
    QRectF room = place.adjusted(0, 0, 0, -4);
    for (qsizetype i = faces.size(); i-- > 0; room.adjust(0, 0, 0, -line))
        painter.drawText(room, Qt::AlignHCenter | Qt::AlignBottom, faces.mid(i, 1));
}

void KeyboardView::playAt(const QPointF& point)
{
    const int semitone = keys().at(point).value_or(-1);
    if (semitone == m_played) return;
    m_keyboard.release(mouse);
    m_played = semitone;
    if (semitone >= 0) m_keyboard.press(mouse, semitone);
}

void KeyboardView::mousePressEvent(QMouseEvent* event)
{
    setFocus(Qt::MouseFocusReason);
    if (event->button() == Qt::LeftButton) playAt(event->position());
}

void KeyboardView::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton) playAt(event->position());
}

void KeyboardView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) playAt({-1, -1});
}

} // namespace tessaro
