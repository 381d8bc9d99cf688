// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/widgets/folding_row.h"
#include "views/widgets/record_button.h"

class QAction;

namespace tessaro {

class ElidedLabel;
class HeldAction;
class Icons;
class NumberDisplay;
class NumberField;
class UiText;

/// The control panel as it is seen: buttons of the transport, and the numbers that run. It shows what it is told, and
/// tells what is typed.
class TransportBar : public FoldingRow {
public:
    struct Actions {
        QAction& top;
        HeldAction& rewind;
        QAction& play;
        QAction& stop;
        QAction& record;
        HeldAction& forward;
        HeldAction& fastForward;
        QAction& end;
        QAction& tempoUp;
        QAction& tempoDown;
        QAction& tempoReset;
        QAction& transposeUp;
        QAction& transposeDown;
        QAction& loop;
        QAction& metronome;
        QAction& midiChase;
        QAction& viewChase;
        QAction& midiSync;
        QAction& undo;
        QAction& redo;
    };

    /// Icons, actions and texts outlive the bar.
    TransportBar(const Icons& icons, const Actions& actions, const UiText& text, QWidget* parent = nullptr);

    void setLocation(const QString& location);
    /// Stands large in the location box until the next location.
    void setCountIn(const QString& count);
    void setClock(const QString& clock);
    /// `relative` says by how much it differs from the song's own; empty for not at all.
    void setTempo(const QString& tempo, const QString& relative);
    void setSignature(const QString& signature);
    void setTranspose(const QString& semitones);
    void setLoop(const QString& start, const QString& end);
    void setRecordState(RecordButton::State state) { m_record->setState(state); }
    void setSongName(const QString& name);
    void retranslate();

    [[nodiscard]] QString location() const;
    [[nodiscard]] NumberField& locationField() const { return *m_location; }
    [[nodiscard]] NumberField& tempoField() const { return *m_tempo; }
    [[nodiscard]] NumberField& transposeField() const { return *m_transpose; }
    [[nodiscard]] NumberField& loopStartField() const { return *m_loopStart; }
    [[nodiscard]] NumberField& loopEndField() const { return *m_loopEnd; }
    [[nodiscard]] RecordButton& recordButton() const { return *m_record; }

private:
    class Group;

    Group& addGroup(int rank);
    void addTransport(const Actions& actions);
    void addTempo(const Actions& actions);
    void addLoop(const Actions& actions);
    void addSwitches(const Actions& actions);
    [[nodiscard]] QWidget* makeSteps(QAction& up, QAction& down);
    [[nodiscard]] QWidget* makeButton(const char* icon, QAction& action);
    void showSync();
    void showTempoCaption();

    const Icons& m_icons;
    const UiText& m_text;
    const QAction& m_midiSync;
    QString m_relative;
    // Children of the widget.
    RecordButton* m_record = nullptr;
    ToolButton* m_sync = nullptr;
    NumberField* m_location = nullptr;
    NumberDisplay* m_clock = nullptr;
    NumberField* m_tempo = nullptr;
    NumberDisplay* m_signature = nullptr;
    NumberField* m_transpose = nullptr;
    NumberField* m_loopStart = nullptr;
    NumberField* m_loopEnd = nullptr;
    ElidedLabel* m_song = nullptr;
};

} // namespace tessaro
