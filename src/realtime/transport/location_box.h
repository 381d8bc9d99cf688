// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace tessaro {

class CnpObserver;
class MessageTarget;

/// The location box, and the views that follow the position: they get the messages 0x415 (it moved) and 0x416 (it
/// jumped), the tick in wParam, as long as they are to follow. Song ticks; main thread. Borrows all.
class LocationBox {
public:
    void setObserver(CnpObserver* observer) noexcept { m_observer = observer; }
    void addView(MessageTarget* view) { m_views.push_back(view); }
    void removeView(const MessageTarget* view) noexcept { std::erase(m_views, view); }
    [[nodiscard]] bool viewsFollow() const noexcept { return m_viewsFollow; }
    void setViewsFollow(bool on) noexcept { m_viewsFollow = on; }
    /// Calls of `follow` from one redraw to the next, at least 1.
    void setThinTime(int calls) noexcept { m_thinTime = calls > 0 ? calls : 1; }

    /// What the box shows.
    [[nodiscard]] std::uint32_t tick() const noexcept { return m_tick; }
    /// Shows a tick; following goes on from there.
    void show(std::uint32_t tick);
    /// The same, and views go there.
    void jumpTo(std::uint32_t tick);
    /// The song has come to `tick` since the last call; when it went back, views go to `back`.
    void follow(std::uint32_t tick, std::uint32_t back);
    /// Counts, in place of the tick.
    void showCountIn(std::optional<int> count);

private:
    void draw(std::uint32_t tick);
    void tellViews(std::uint32_t message, std::uint32_t tick);

    CnpObserver* m_observer = nullptr;
    std::vector<MessageTarget*> m_views;
    std::uint32_t m_tick = 0;
    std::uint32_t m_followed = 0; ///< position at the last call of `follow`
    std::optional<int> m_countIn; ///< shown now
    int m_thinTime = 1;
    int m_thinCount = 0;
    bool m_viewsFollow = true;
};

} // namespace tessaro
