// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/edits/plan_text.h"

#include "core/tools/edit_plan.h"
#include "views/text/ui_text.h"

namespace tessaro {

QString planText(const EditPlan& plan, std::size_t selected, const UiText& text)
{
    if (selected == 0) return text(TextId::editSelectFirst);
    if (plan.fault == PlanFault::keyRange) return text(TextId::editKeysRunOut).arg(plan.faulty);
    if (plan.fault == PlanFault::emptyTracks) return text(TextId::editTracksRunOut);
    if (plan.count() == 0) return text(plan.hasLinked ? TextId::linkedBlockNotEditable : TextId::editNothingChanges);
    const TextId sentence = !plan.removals.empty()  ? TextId::editWillRemove
                          : !plan.transfers.empty() ? TextId::editWillSplit
                                                    : TextId::editWillChange;
    return text(sentence).arg(plan.count()).arg(plan.considered);
}

} // namespace tessaro
