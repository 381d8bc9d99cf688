// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/setup/setup_page.h"

namespace tessaro {

class KindBoxes;
class UiText;

/// Which kinds of messages do not go out.
class CSysOutFltrPropPage : public SetupPage {
public:
    CSysOutFltrPropPage(const Settings& settings, const UiText& text, QWidget* parent = nullptr);
    void apply(Settings& settings) const override;

private:
    KindBoxes* m_kinds; ///< a child of the page
};

/// Which kinds of messages do not pass from the input to the output.
class CSysThruFltrPropPage : public SetupPage {
public:
    CSysThruFltrPropPage(const Settings& settings, const UiText& text, QWidget* parent = nullptr);
    void apply(Settings& settings) const override;

private:
    KindBoxes* m_kinds; ///< a child of the page
};

} // namespace tessaro
