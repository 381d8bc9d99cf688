// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/app_windows.h"
#include "core/ports/progress.h"
#include "views/frame/main_frame.h"

#include <functional>
#include <memory>

namespace tessaro {

/// The windows as application and document see them: makes the main window when the start asks for it, and passes on
/// what concerns it. Before there is a window nothing is shown.
class MainWindows : public AppWindows, public ProgressPort {
public:
    using Maker = std::function<std::unique_ptr<CMainFrame>()>;
    /// How the main window is made; to be set before the start.
    void setMaker(Maker maker) { m_maker = std::move(maker); }

    [[nodiscard]] CMainFrame* frame() const { return m_frame.get(); }
    void close() { m_frame.reset(); }

    bool createMainFrame() override
    {
        m_frame = m_maker();
        return m_frame != nullptr;
    }
    void createControlPanel() override {} // a strip of the main window
    /// All but the track window; the song that goes away stops.
    void closeChildFrames() override
    {
        if (m_frame) m_frame->songLeaves();
    }
    void songReplaced() override
    {
        if (m_frame) m_frame->songReplaced();
    }
    SaveAnswer askSaveChanges(std::string_view name) override
    {
        return m_frame ? m_frame->files().askSaveChanges(name) : SaveAnswer::discard;
    }
    std::optional<SaveChoice> askSaveName(const SaveChoice& proposed) override
    {
        return m_frame ? m_frame->files().askSaveName(proposed) : std::nullopt;
    }
    void titleChanged() override
    {
        if (m_frame) m_frame->showState();
    }
    void songToTop() override
    {
        if (m_frame) m_frame->songToTop();
    }
    void setSyncMode(int mode) override
    {
        if (m_frame) m_frame->setSyncMode(mode);
    }
    void showMainFrame() override
    {
        if (m_frame) m_frame->showInPlace();
    }

    void begin() override
    {
        if (m_frame) m_frame->statusLine().begin();
    }
    void range(std::uint32_t low, std::uint32_t high) override
    {
        if (m_frame) m_frame->statusLine().range(low, high);
    }
    void pos(std::uint32_t position) override
    {
        if (m_frame) m_frame->statusLine().pos(position);
    }
    void text(std::string_view line) override
    {
        if (m_frame) m_frame->statusLine().text(line);
    }
    void end() override
    {
        if (m_frame) m_frame->statusLine().end();
    }

private:
    Maker m_maker;
    std::unique_ptr<CMainFrame> m_frame;
};

} // namespace tessaro
