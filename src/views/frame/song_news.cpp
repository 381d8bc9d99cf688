// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/song_news.h"

#include "core/edit/editor.h"
#include "views/text/ui_text.h"
#include "views/transport/location_text.h"

namespace tessaro {

QString loadedNews(const CEditor& song, const UiText& text)
{
    int used = 0;
    for (int track = 1; track < trackCount; ++track) used += song.GetHeadBlkPos(track) != nullptr;
    if (used == 0) return {};
    const std::uint32_t end = song.GetTimeEnd();
    _EDT_MEAS last;
    song.TimeToMeas(end > 0 ? end - 1 : 0, last);
    return text(TextId::songLoaded).arg(used).arg(last.meas).arg(utf8Text(clockText(song.TimeToMsecond(end))));
}

} // namespace tessaro
