// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/setup/controller_filter.h"
#include "views/setup/setup_page.h"

class QPushButton;

namespace tessaro {

class KindBoxes;
class UiText;

/// Which kinds of messages are not recorded; controllers may be chosen one by one.
class CSysInFltrPropPage : public SetupPage {
public:
    CSysInFltrPropPage(const Settings& settings, const UiText& text, QWidget* parent = nullptr);
    void apply(Settings& settings) const override;

private:
    QPushButton* addButton(const QString& name, int first);
    void chooseControllers(int first);
    void showBox();

    const UiText& m_text;
    ControllerFilter m_controllers;
    KindBoxes* m_kinds; ///< a child of the page
};

} // namespace tessaro
