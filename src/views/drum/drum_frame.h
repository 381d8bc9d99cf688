// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/roll/roll_frame.h"

namespace tessaro {

class CDrumView;
class ChoiceBox;

/// The window of the drum grid: the hits of one track, a row a drum.
class CDrumFrame : public RollFrame {
public:
    CDrumFrame(const ViewParts& parts, int track);

    [[nodiscard]] WindowKind kind() const override { return WindowKind::drum; }
    void retranslate() override;
    void saveState() override;
    void restoreState() override;

    [[nodiscard]] CDrumView& drums() const;

protected:
    [[nodiscard]] TextId windowName() const override { return TextId::drumWindow; }
    [[nodiscard]] const char* settingsName() const override { return "Drum"; }

private:
    ChoiceBox* m_rows; ///< child of the widget
};

} // namespace tessaro
