// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSplitter>

namespace tessaro {

/// Notes above, controller strip below, with a handle between them. The strip is as high as the person left it, as far
/// as there is room: where there is little it gives way to the notes, and comes back with the room.
class StripSplitter : public QSplitter {
public:
    static constexpr int leastStrip = 40;
    static constexpr int leastNotes = 120;

    /// Takes both over.
    StripSplitter(QWidget* notes, QWidget* strip);

    /// Pixels that a strip gets which is to be `wanted` high, of those that notes and strip have together.
    [[nodiscard]] static int stripHeight(int wanted, int together);

    /// As the person left it, in pixels, whether there is room for it or not.
    [[nodiscard]] int wanted() const { return m_wanted; }
    void setWanted(int pixels);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void share();

    int m_wanted = 200;
};

} // namespace tessaro
