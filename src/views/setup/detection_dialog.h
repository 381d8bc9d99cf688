// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/transport/module_detection.h"

#include <QDialog>
#include <QTimer>

class QDialogButtonBox;
class QLabel;
class QTreeWidget;

namespace tessaro {

class UiText;

/// Watches the detection of modules while it asks output after output. Cancel ends it; OK is there when it is through.
class DetectionDialog : public QDialog, public ModuleDetectionObserver {
public:
    /// Starts when it is shown. The detection outlives it.
    DetectionDialog(ModuleDetection& detection, const UiText& text, QWidget* parent = nullptr);
    ~DetectionDialog() override;

    void rowFound(const ModuleRow& row) override;
    void ended() override;
    void done(int result) override;

    [[nodiscard]] QTreeWidget& rows() const { return *m_rows; }
    [[nodiscard]] QDialogButtonBox& buttons() const { return *m_buttons; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    ModuleDetection& m_detection;
    const UiText& m_text;
    QTimer m_timer;
    // Children of the dialog.
    QLabel* m_says;
    QTreeWidget* m_rows;
    QDialogButtonBox* m_buttons;
};

} // namespace tessaro
