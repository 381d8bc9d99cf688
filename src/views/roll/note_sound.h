// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "realtime/transport/note_audition.h"

#include <QBasicTimer>
#include <QObject>

#include <utility>

namespace tessaro {

/// The one note at a time that a window lets be heard: as long as it is held, or for a moment. It ends with the window.
/// Borrows what sounds.
class NoteSound : public QObject {
public:
    explicit NoteSound(NoteAudition& audition) : m_audition(audition) {}
    ~NoteSound() override { stop(); }

    /// Until `stop`, or the next one.
    void hold(int track, std::uint8_t key, std::uint8_t velocity)
    {
        m_timer.stop();
        m_isHeard = true;
        m_audition.start(track, key, velocity);
    }
    void play(int track, std::uint8_t key, std::uint8_t velocity)
    {
        hold(track, key, velocity);
        m_timer.start(moment, this);
    }
    void stop()
    {
        m_timer.stop();
        if (std::exchange(m_isHeard, false)) m_audition.stop();
    }

protected:
    void timerEvent(QTimerEvent*) override { stop(); }

private:
    static constexpr int moment = 250; ///< milliseconds

    NoteAudition& m_audition;
    QBasicTimer m_timer;
    bool m_isHeard = false; ///< a note that began here
};

} // namespace tessaro
