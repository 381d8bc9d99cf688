// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/setup/setup_page.h"

#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

class QGridLayout;
class QPushButton;

namespace tessaro {

class ChoiceBox;
class DriverListView;
class UiText;

/// The drivers of the machine by their names, in the order of their numbers.
struct SetupDrivers {
    QStringList midiOut;
    QStringList midiIn;
    QStringList waveOut;
    QStringList waveIn;
};

/// Which drivers the ports use: the input, the port of thru, and the lists of outputs in the order of their ports.
class CSysDevPropPage : public SetupPage {
public:
    /// Too many drivers for the lists: the page cannot be shown.
    [[nodiscard]] static bool refuses(const SetupDrivers& drivers);

    CSysDevPropPage(const Settings& settings, const SetupDrivers& drivers, const UiText& text,
                    QWidget* parent = nullptr);
    void apply(Settings& settings) const override;

    /// Looks which outputs have a module, in the order of the outputs; nothing when the person gives up. Without it
    /// there is no button.
    void setDetection(std::function<std::optional<std::vector<int>>()> detect);

    [[nodiscard]] DriverListView& midiOut() const { return *m_midiOut; }
    [[nodiscard]] DriverListView& waveOut() const { return *m_waveOut; }
    [[nodiscard]] ChoiceBox& midiIn() const { return *m_midiIn; }
    [[nodiscard]] ChoiceBox& thru() const { return *m_thru; }

private:
    DriverListView* makeList(std::span<const std::int32_t> ports, const QStringList& names);
    void addList(QGridLayout& layout, const QString& name, DriverListView& list, QWidget* below);
    void fillThru();

    const UiText& m_text;
    const QStringList m_outNames;
    int m_thruDriver; ///< the driver of the thru port, none for a number below 0
    // Children of the page.
    ChoiceBox* m_midiIn;
    ChoiceBox* m_thru;
    DriverListView* m_midiOut;
    QPushButton* m_detect;
    ChoiceBox* m_waveIn;
    DriverListView* m_waveOut;
};

} // namespace tessaro
