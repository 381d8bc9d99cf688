// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/doc/settings.h"
#include "views/setup/position_scale.h"

#include <QDialog>

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QRadioButton;
class QSpinBox;

namespace tessaro {

class ChoiceBox;
class PositionBox;
class UiText;

/// How takes are recorded and how the song plays: mode, punch, count-in, folder of waves, chase and loop. It changes
/// nothing itself.
class CSysRecDlg : public QDialog {
public:
    CSysRecDlg(const RecordPlaySettings& settings, const PushedRange& loop, const PositionScale& scale,
               const UiText& text, QWidget* parent = nullptr);

    /// As the fields stand now.
    [[nodiscard]] RecordPlaySettings settings() const;
    [[nodiscard]] const PushedRange& loop() const { return m_loop; }

    [[nodiscard]] QRadioButton& realTime() const { return *m_realTime; }
    [[nodiscard]] QRadioButton& step() const { return *m_step; }
    [[nodiscard]] ChoiceBox& realMode() const { return *m_realMode; }
    [[nodiscard]] PositionBox& punchIn() const { return *m_punchIn; }
    [[nodiscard]] PositionBox& punchOut() const { return *m_punchOut; }
    [[nodiscard]] PositionBox& loopStart() const { return *m_loopStart; }
    [[nodiscard]] PositionBox& loopEnd() const { return *m_loopEnd; }

private:
    QGroupBox* modeGroup();
    QGroupBox* realTimeGroup();
    QGroupBox* playGroup();
    QGroupBox* waveGroup();
    void show(const RecordPlaySettings& settings);
    void pair(PushedRange& range, PositionBox& start, PositionBox& end);
    void enable();
    void browse();

    const UiText& m_text;
    PushedRange m_punch;
    PushedRange m_loop;
    // Children of the dialog.
    QRadioButton* m_realTime;
    QRadioButton* m_step;
    QGroupBox* m_realTimeGroup = nullptr;
    ChoiceBox* m_block;
    ChoiceBox* m_realMode;
    PositionBox* m_punchIn;
    PositionBox* m_punchOut;
    QSpinBox* m_countIn;
    QCheckBox* m_countInPlay;
    QCheckBox* m_midiChase;
    QCheckBox* m_viewChase;
    PositionBox* m_loopStart;
    PositionBox* m_loopEnd;
    QLineEdit* m_folder;
};

} // namespace tessaro
