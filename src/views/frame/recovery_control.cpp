// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/recovery_control.h"

#include "core/doc/recovery.h"
#include "realtime/transport/cnp_window.h"
#include "views/frame/file_commands.h"
#include "views/frame/status_line.h"
#include "views/frame/window_user.h"
#include "views/recovery/recovery_panel.h"
#include "views/text/ui_text.h"

namespace tessaro {

RecoveryControl::RecoveryControl(const FrameParts& parts, const Places& places) : m_parts(parts), m_places(places)
{
    m_places.panel.onOpen = [this](std::size_t index) { open(index); };
    m_places.panel.onDiscard = [this](std::size_t index) { discard(index); };
    m_places.panel.onLater = [this] { offer(nullptr); };
}

RecoveryControl::~RecoveryControl() = default;

void RecoveryControl::offer(std::unique_ptr<RecoveryList> songs)
{
    m_songs = std::move(songs);
    show();
    if (m_places.panel.isVisible()) m_places.panel.setFocus();
}

void RecoveryControl::open(std::size_t index)
{
    const std::string take = m_songs->songs()[index].take;
    const bool open = m_places.files.recover(*m_songs, index);
    if (open && !take.empty() && !m_parts.panel.recorder().restore(take))
        m_places.status.setNews(m_parts.text(TextId::fileFailed));
    show();
}

void RecoveryControl::discard(std::size_t index)
{
    const RecoveryLine line = recoveryLine(m_songs->songs()[index], m_parts.text);
    if (!m_parts.user.askBox(m_parts.text(TextId::recoveryAskDiscard).arg(line.name, line.time))) return;
    m_songs->decline(index);
    show();
}

void RecoveryControl::show()
{
    if (m_songs && m_songs->songs().empty()) m_songs.reset();
    m_places.panel.setSongs(m_songs ? m_songs->songs() : std::vector<RecoverableSong>());
    if (!m_songs) onDone();
}

void RecoveryControl::retranslate()
{
    m_places.panel.retranslate();
    show();
}

} // namespace tessaro
