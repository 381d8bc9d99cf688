// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/view_choices.h"

#include "views/frame/frame_actions.h"
#include "views/frame/frame_parts.h"
#include "views/frame/panel_dock.h"
#include "views/frame/user_settings.h"
#include "views/text/ui_text.h"

namespace tessaro {

ViewChoices::ViewChoices(const FrameParts& parts, FrameActions& actions, PanelDock& dock)
    : m_actions(actions)
    , m_dock(dock)
{
    const UserSettings settings(parts.store);
    FrameActions::choose(actions.appearance, static_cast<int>(settings.appearance()));
    FrameActions::choose(actions.language, settings.languageNumber());
    actions.openLastWindows.setChecked(settings.opensLastWindows());
    const auto on = [this](QActionGroup& group, auto take) {
        connect(&group, &QActionGroup::triggered, this,
                [take](const QAction* action) { take(action->data().toInt()); });
    };
    on(actions.appearance, [&parts](int number) {
        const auto appearance = static_cast<Appearance>(number);
        UserSettings(parts.store).setAppearance(appearance);
        parts.theme.setAppearance(appearance);
    });
    on(actions.language, [this, &parts](int number) {
        UserSettings store(parts.store);
        store.setLanguageNumber(number);
        parts.text.setLanguage(store.language());
        onLanguage();
    });
    on(actions.panelPlace, [&dock](int number) { dock.setPlace(static_cast<PanelPlace>(number)); });
    connect(&actions.openLastWindows, &QAction::triggered, this,
            [&parts](bool opens) { UserSettings(parts.store).setOpensLastWindows(opens); });
    connect(&dock, &PanelDock::topLevelChanged, this, [this] { showPanelPlace(); });
    connect(&dock, &PanelDock::dockLocationChanged, this, [this] { showPanelPlace(); });
}

void ViewChoices::showPanelPlace() { FrameActions::choose(m_actions.panelPlace, static_cast<int>(m_dock.place())); }

} // namespace tessaro
