// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ports/app_windows.h"

#include <QFileDialog>

namespace tessaro {

class UiText;

/// Kind of file of a row of the save dialog, counted from 0; 4 for a row that it has not.
[[nodiscard]] std::uint8_t kindOfRow(int row);
/// The row for a kind of file; that of the native kind for 0.
[[nodiscard]] int rowOfKind(std::uint8_t kind);
/// The name with the extension of the row instead of its own; an empty name stays empty.
[[nodiscard]] QString withExtensionOfRow(const QString& name, int row);

/// Asks where to save, and as what kind of file. Another kind gives the name another extension, a name without one gets
/// it; the toolkit asks before a file is replaced.
class SaveDialog : public QFileDialog {
public:
    /// Starts in the proposed file's folder with its name, or in `folder` for a song without a file.
    SaveDialog(const SaveChoice& proposed, const QString& folder, const UiText& text, QWidget* parent);

    [[nodiscard]] SaveChoice choice() const;
    [[nodiscard]] int row() const;

private:
    void makeRoom();
    void rowChosen();
};

} // namespace tessaro
