// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/editors/track_label.h"

#include "core/edit/editor.h"
#include "views/text/ui_text.h"

namespace tessaro {

QString trackLabel(const CEditor& editor, int track, const UiText& text)
{
    if (track == 0) return text(TextId::masterTitle);
    const CTrk* trk = List<CTrk>::get(editor.GetTrkPos(track));
    const QString name = trk ? songText(trk->GetName()) : QString();
    return name.isEmpty() ? text(TextId::trackUnnamed).arg(track) : QStringLiteral("%1 %2").arg(track).arg(name);
}

} // namespace tessaro
