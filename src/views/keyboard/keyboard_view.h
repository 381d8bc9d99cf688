// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/keyboard/piano_keys.h"

#include <QWidget>

namespace tessaro {

class TypedKeyboard;

/// The piano keys that the computer's keys play, with what stands on these; those that sound are lit. The mouse plays
/// them too, and slides from one to the next.
class KeyboardView : public QWidget {
public:
    /// The keyboard outlives the view.
    explicit KeyboardView(TypedKeyboard& keyboard, QWidget* parent = nullptr);

    /// Whether the computer's keys play now; their names are dimmed otherwise.
    void setHasKeys(bool has);

    [[nodiscard]] QSize sizeHint() const override { return {646, 92}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {340, 72}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] PianoKeys keys() const;
    void paintKey(QPainter& painter, int semitone, const QRectF& place) const;
    void playAt(const QPointF& point);

    TypedKeyboard& m_keyboard;
    int m_played = -1; ///< semitone under the pressed mouse
    bool m_hasKeys = true;
};

} // namespace tessaro
