// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeyEvent>

namespace tessaro {

/// For the editors of cells and numbers: keeps a plain key from being taken as a command of the window. True when the
/// event was such a key.
inline bool keepsKey(QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    event->accept();
    return true;
}

} // namespace tessaro
