// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/list_frame.h"

#include "core/edit/editor.h"
#include "views/list/list_view.h"
#include "views/text/ui_text.h"

#include <QVBoxLayout>

namespace tessaro {

CListFrm::CListFrm(const ViewParts& parts, int track) : m_parts(parts), m_list(new CListVw(parts, track, this))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_list);
}

CListFrm::~CListFrm() = default;

QString CListFrm::title() const { return m_parts.text(TextId::listTitle); }
int CListFrm::track() const { return m_list->track(); }
void CListFrm::setTrack(int track) { m_list->setTrack(track); }
bool CListFrm::can(ViewCommand) const { return false; }
void CListFrm::run(ViewCommand) {}
std::vector<EvntRef> CListFrm::selectedEvnts() const { return {}; }
void CListFrm::selectEvnts(std::span<const EvntRef>) {}
void CListFrm::setPosition(std::uint32_t, bool) {}
void CListFrm::songReplaced() {}
void CListFrm::retranslate() {}
void CListFrm::saveState() {}
void CListFrm::restoreState() {}

} // namespace tessaro
