// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolBar>

namespace tessaro {

class FrameActions;
class Icons;
class ViewActions;

/// The tools and the most used commands of the child windows as buttons. Where the bar is too narrow, whole groups go.
class EditToolBar : public QToolBar {
public:
    /// Icons and actions outlive the bar.
    EditToolBar(const Icons& icons, FrameActions& frame, ViewActions& view);
};

} // namespace tessaro
