// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/master/master_frame.h"

#include "core/edit/editor.h"
#include "views/list/list_view.h"
#include "views/text/ui_text.h"

#include <QVBoxLayout>

namespace tessaro {

CMstrFrm::CMstrFrm(const ViewParts& parts) : m_parts(parts), m_list(new CListVw(parts, 0, this))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_list);
}

CMstrFrm::~CMstrFrm() = default;

QString CMstrFrm::title() const { return m_parts.text(TextId::masterTitle); }
bool CMstrFrm::can(ViewCommand) const { return false; }
void CMstrFrm::run(ViewCommand) {}
std::vector<EvntRef> CMstrFrm::selectedEvnts() const { return {}; }
void CMstrFrm::selectEvnts(std::span<const EvntRef>) {}
void CMstrFrm::setPosition(std::uint32_t, bool) {}
void CMstrFrm::songReplaced() {}
void CMstrFrm::retranslate() {}
void CMstrFrm::saveState() {}
void CMstrFrm::restoreState() {}

} // namespace tessaro
