// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QAction;

namespace tessaro {

class ElidedLabel;
class Icons;
class NumberDisplay;
class UiText;

/// The strip that is always in reach: buttons of the transport, and the numbers that run. It shows what it is told.
class TransportBar : public QWidget {
public:
    struct Actions {
        QAction& top;
        QAction& play;
        QAction& stop;
        QAction& loop;
        QAction& metronome;
        QAction& undo;
        QAction& redo;
    };

    /// Icons, actions and texts outlive the bar.
    TransportBar(const Icons& icons, const Actions& actions, const UiText& text, QWidget* parent = nullptr);

    void setLocation(const QString& location);
    void setClock(const QString& clock);
    void setTempo(const QString& tempo);
    void setSignature(const QString& signature);
    void setSongName(const QString& name);
    void retranslate();

    [[nodiscard]] QString location() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const UiText& m_text;
    // Children of the widget.
    NumberDisplay* m_location;
    NumberDisplay* m_clock;
    NumberDisplay* m_tempo;
    NumberDisplay* m_signature;
    ElidedLabel* m_song;
};

} // namespace tessaro
