// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/setup/setup_page.h"

class QRadioButton;

namespace tessaro {

class ChoiceBox;
class SettingsStore;
class UiText;

/// What the song keeps time with.
class CSysSyncPropPage : public SetupPage {
public:
    CSysSyncPropPage(const Settings& settings, const UiText& text, QWidget* parent = nullptr);
    void apply(Settings& settings) const override;

private:
    // Children of the page.
    QRadioButton* m_internal;
    QRadioButton* m_midi;
};

/// In which format waves are recorded.
class CSysWavFmtPropPage : public SetupPage {
public:
    CSysWavFmtPropPage(const Settings& settings, const UiText& text, QWidget* parent = nullptr);
    void apply(Settings& settings) const override;

private:
    ChoiceBox* m_format; ///< a child of the page
};

/// Buffers of system exclusive messages, and the pause between two that are sent. The choices come from the
/// installation; a setting above them all stays until another is chosen.
class CSysSysexPropPage : public SetupPage {
public:
    CSysSysexPropPage(const Settings& settings, const SettingsStore& choices, const UiText& text,
                      QWidget* parent = nullptr);
    void apply(Settings& settings) const override;

private:
    // Children of the page.
    ChoiceBox* m_receive;
    ChoiceBox* m_send;
    ChoiceBox* m_interval;
};

} // namespace tessaro
