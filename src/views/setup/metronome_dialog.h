// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/setup/click_preview.h"

#include <QDialog>
#include <QTimer>

class QPushButton;
class QSpinBox;

namespace tessaro {

class ChoiceBox;
class UiText;

/// Where the metronome's click goes, and how it sounds at a bar's start and at the other beats. A button lets it be
/// heard; nothing else is changed.
class MetronomeDialog : public QDialog {
public:
    /// `ports` are the names of the output ports; `send` sends at once.
    MetronomeDialog(const MetronomeSettings& settings, const QStringList& ports, ClickPreview::Send send,
                    const UiText& text, QWidget* parent = nullptr);
    ~MetronomeDialog() override;

    [[nodiscard]] MetronomeSettings settings() const;

    [[nodiscard]] ChoiceBox& port() const { return *m_port; }
    [[nodiscard]] QSpinBox& channel() const { return *m_channel; }
    [[nodiscard]] QPushButton& listenButton() const { return *m_listen; }

private:
    /// How the click sounds on some of the beats.
    struct Sound {
        QSpinBox* note;
        QSpinBox* velocity;
    };

    Sound makeSound(int note, int velocity, const QString& name, const UiText& text);
    void layOut(const QStringList& ports, const UiText& text);
    void listen();
    void step();

    MetronomeSettings m_before;
    ClickPreview m_preview;
    QTimer m_timer;
    // Children of the dialog.
    ChoiceBox* m_port;
    QSpinBox* m_channel;
    Sound m_bar;
    Sound m_beat;
    QPushButton* m_listen;
};

} // namespace tessaro
