// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/blk_menu.h"

#include "core/edit/editor.h"
#include "views/editors/command_buttons.h"
#include "views/editors/view_actions.h"
#include "views/text/ui_text.h"
#include "views/transport/location_text.h"

#include <QMenu>

namespace tessaro {

void fillBlkMenu(QMenu& menu, ViewActions& actions, bool onBlk)
{
    using C = ViewCommand;
    const auto add = [&](std::initializer_list<C> commands) { addCommands(menu, actions, commands); };
    if (!onBlk) {
        add({C::newBlock, C::paste});
        add({C::selectAll, C::zoomToSong});
        return;
    }
    add({C::openEditor, C::properties});
    add({C::cut, C::copy, C::paste, C::remove});
    add({C::duplicate, C::duplicateLinked, C::divideBlocks, C::linkBlocks, C::mergeBlocks});
    add({C::realiseBlock, C::showSource, C::selectSiblings});
    add({C::zoomToSelection});
}

QString blkTip(const CEditor& editor, const UiText& text, const BlkRef& ref, int links)
{
    const CBlk& blk = *List<CBlk>::get(ref.blk);
    const auto place = [&](std::uint32_t tick) {
        _EDT_MEAS at;
        editor.TimeToMeas(tick, at);
        return utf8Text(locationText(at));
    };
    QString tip =
        text(TextId::tipBlock)
            .arg(songText(editor.GetBlkName(ref.trk, ref.blk)), place(blk.GetTimeTop()), place(blk.GetTimeEnd()));
    if (links > 1) tip += '\n' + text(TextId::tipBlockLinked).arg(links);
    return tip;
}

} // namespace tessaro
