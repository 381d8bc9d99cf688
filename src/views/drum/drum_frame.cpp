// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/drum/drum_frame.h"

#include "core/ports/settings_store.h"
#include "views/drum/drum_view.h"
#include "views/setup/choice_box.h"
#include "views/text/ui_text.h"

namespace tessaro {
namespace {

constexpr const char* section = "View Condition";
constexpr const char* rowsKey = "Drum Rows";

} // namespace

CDrumFrame::CDrumFrame(const ViewParts& parts, int track)
    : RollFrame(parts, new CDrumView(parts))
    , m_rows(new ChoiceBox(this))
{
    for (const auto shown : {DrumRows::Shown::named, DrumRows::Shown::used, DrumRows::Shown::all})
        m_rows->add({}, static_cast<int>(shown));
    m_rows->choose(static_cast<int>(drums().shown()));
    connect(m_rows, &QComboBox::activated, this,
            [this] { drums().setShown(static_cast<DrumRows::Shown>(m_rows->chosen(0))); });
    addToToolBar(m_rows, 2);
    retranslate();
    restoreState();
    setTrack(track);
}

void CDrumFrame::saveState()
{
    RollFrame::saveState();
    parts().store.setInt(section, rowsKey, static_cast<int>(drums().shown()));
}

void CDrumFrame::restoreState()
{
    RollFrame::restoreState();
    m_rows->choose(parts().store.getInt(section, rowsKey, static_cast<int>(drums().shown())));
    if (m_rows->currentIndex() < 0) m_rows->choose(static_cast<int>(drums().shown()));
    drums().setShown(static_cast<DrumRows::Shown>(m_rows->chosen(0)));
}

CDrumView& CDrumFrame::drums() const { return static_cast<CDrumView&>(view()); }

void CDrumFrame::retranslate()
{
    RollFrame::retranslate();
    const UiText& text = parts().text;
    m_rows->setItemText(0, text(TextId::drumRowsNamed));
    m_rows->setItemText(1, text(TextId::drumRowsUsed));
    m_rows->setItemText(2, text(TextId::drumRowsAll));
    m_rows->setToolTip(text(TextId::drumRows));
    m_rows->setAccessibleName(text(TextId::drumRows));
}

} // namespace tessaro
