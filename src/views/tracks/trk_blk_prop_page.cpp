// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_blk_prop_page.h"

#include "base/text.h"
#include "core/edit/editor.h"
#include "views/setup/position_box.h"
#include "views/text/ui_text.h"
#include "views/tracks/blk_commands.h"

#include <QLineEdit>
#include <QSpinBox>

namespace tessaro {

CTrkBlkPropPage::CTrkBlkPropPage(CEditor& editor, BlkCommands& commands, const UiText& text, const BlkRef& ref,
                                 QWidget* parent)
    : PropPage(text(TextId::blockProperties), parent)
    , m_commands(commands)
    , m_blk(ref)
    , m_oldName(songText(List<CBlk>::get(ref.blk)->GetName()))
    , m_oldBytes(List<CBlk>::get(ref.blk)->GetName())
    , m_name(new QLineEdit(m_oldName, this))
    , m_top(new PositionBox(PositionScale(&editor), this))
    , m_end(new PositionBox(PositionScale(&editor), this))
    , m_track(new QSpinBox(this))
{
    const CBlk& blk = *List<CBlk>::get(ref.blk);
    m_name->selectAll();
    m_top->setTick(blk.GetTimeTop());
    m_end->setTick(blk.GetTimeEnd());
    m_end->setEnabled(blk.GetType() == blktype::real); // a ghost is as long as its source
    m_track->setRange(1, trackCount - 1);
    m_track->setValue(Song::numberOf(ref.trk));
    // The length stays when the block is put elsewhere.
    m_top->onSet = [this, before = blk.GetTimeTop()](std::uint32_t top) mutable {
        m_end->setTick(tick::shifted(m_end->tick(), std::int64_t{top} - before));
        before = top;
    };
    addField(text, TextId::propName, *m_name);
    addField(text, TextId::propStart, *m_top);
    addField(text, TextId::propEnd, *m_end);
    addField(text, TextId::propTrack, *m_track);
}

void CTrkBlkPropPage::take()
{
    m_top->interpretText();
    m_end->interpretText();
    m_track->interpretText();
    const bool renamed = m_name->text() != m_oldName;
    m_commands.change(m_blk, {.name = renamed ? fromUtf8(m_name->text().toStdString()) : m_oldBytes,
                              .top = m_top->tick(),
                              .end = m_end->tick(),
                              .track = m_track->value()});
}

} // namespace tessaro
