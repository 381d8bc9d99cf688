// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list/insert_menu.h"

#include "views/roll/note_text.h"
#include "views/text/ui_text.h"

#include <QMenu>

namespace tessaro {
namespace {

constexpr std::uint8_t usualControllers[] = {1, 7, 10, 11, 64, 91, 93};

bool beginsGroup(EvntKind kind) { return kind == EvntKind::sysex || kind == EvntKind::tempo || kind == EvntKind::text; }

} // namespace

void fillKinds(QMenu& menu, const std::vector<EvntKind>& kinds, const UiText& text, InsertKind insert)
{
    const auto add = [&](QMenu& to, const QString& name, EvntKind kind, std::optional<std::uint8_t> controller) {
        QObject::connect(to.addAction(name), &QAction::triggered, &menu,
                         [insert, kind, controller] { insert(kind, controller); });
    };
    for (const EvntKind kind : kinds) {
        if (beginsGroup(kind) && !menu.isEmpty()) menu.addSeparator();
        const QString name = text(infoOf(kind).name);
        if (kind != EvntKind::control) {
            add(menu, name, kind, std::nullopt);
            continue;
        }
        QMenu& controllers = *menu.addMenu(name);
        for (const std::uint8_t controller : usualControllers)
            add(controllers, controllerName(controller, text), kind, controller);
        controllers.addSeparator();
        add(controllers, text(TextId::listOtherController), kind, std::uint8_t{0});
    }
}

} // namespace tessaro
