// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/doc/settings.h"

#include <QDialog>

#include <vector>

class QLabel;
class QListWidget;
class QStackedWidget;

namespace tessaro {

class CSysDevPropPage;
class SettingsStore;
class SetupPage;
class UiText;
struct SetupDrivers;

/// The system setup: its pages behind a list of their names. It changes nothing itself.
class SetupSheet : public QDialog {
public:
    /// `choices` has the rows of the boxes for system exclusive messages. The page of devices stays shut when there are
    /// too many drivers for it.
    SetupSheet(const Settings& settings, const SetupDrivers& drivers, const SettingsStore& choices, const UiText& text,
               QWidget* parent = nullptr);

    /// The settings as the pages have them now.
    [[nodiscard]] Settings settings() const;

    /// Null when it stays shut.
    [[nodiscard]] CSysDevPropPage* devicePage() const { return m_devices; }
    [[nodiscard]] QListWidget& pageList() const { return *m_list; }
    /// The page of this row of the list.
    [[nodiscard]] QWidget& page(int row) const;

private:
    void addPage(const QString& name, SetupPage* page);
    void layOut(const UiText& text);
    /// To the next row that can be shown, 1, or the one before, -1.
    void turn(int direction);

    Settings m_before;
    // Children of the dialog.
    QListWidget* m_list;
    QLabel* m_heading;
    QStackedWidget* m_stack;
    std::vector<SetupPage*> m_pages;
    CSysDevPropPage* m_devices = nullptr;
};

} // namespace tessaro
