// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/list.h"

#include <cstdint>
#include <span>

namespace tessaro {

class CBlk;
class CEditor;

/// The take that playing keeps clear of. User interface thread.
class TakeInfo {
public:
    virtual ~TakeInfo() = default;
    /// The record button is on, and not for step input.
    [[nodiscard]] virtual bool recordsInTime() const = 0;
    /// The block under recording on a track, null for none.
    [[nodiscard]] virtual const CBlk* GetRecBlk(POSITION trk) const = 0;
};

/// The score's repeat marks as playing asks them. Set up on the user interface thread before a run, asked by the
/// feeder once a tick.
class RepeatPlan {
public:
    virtual ~RepeatPlan() = default;
    virtual void Init(CEditor& editor, std::uint32_t start) = 0;
    virtual void Reset() = 0;
    /// Whether the piece ends here.
    [[nodiscard]] virtual bool IsEnd(std::uint32_t tick) const = 0;
    /// Whether the song jumps from here, and where to. A mark that repeats once answers once.
    virtual bool GetJump(std::uint32_t tick, std::uint32_t& to) = 0;
};

/// A song that plays straight on.
class NoRepeats final : public RepeatPlan {
public:
    void Init(CEditor&, std::uint32_t) override {}
    void Reset() override {}
    bool IsEnd(std::uint32_t) const override { return false; }
    bool GetJump(std::uint32_t, std::uint32_t&) override { return false; }
};

/// The accompaniment styles, which sound as sixteen further tracks. `bind` and `locate` with a standing song belong to
/// the user interface thread, the rest to the feeder.
class StyleCursor {
public:
    virtual ~StyleCursor() = default;
    virtual void bind(CEditor* editor) = 0;
    /// Back to the chord of a song's start.
    virtual void resetChord() = 0;
    /// With `send` the setup goes out. The result is the tempo that the style at `tick` brings, 0 for none.
    virtual std::uint32_t locate(std::uint32_t tick, bool send) = 0;
    virtual void tick(std::uint32_t nowTick) = 0;
    /// Queues what ends the notes whose time has come.
    virtual void dueNotesOff() = 0;
    virtual void allNotesOff() = 0;
    /// A chord event passes; `beforeLoop` when it stands not behind the loop's start.
    virtual void chord(std::span<const std::uint8_t, 4> bytes, std::uint32_t nowTick, bool beforeLoop) = 0;
};

/// A song without styles.
class NoStyles final : public StyleCursor {
public:
    void bind(CEditor*) override {}
    void resetChord() override {}
    std::uint32_t locate(std::uint32_t, bool) override { return 0; }
    void tick(std::uint32_t) override {}
    void dueNotesOff() override {}
    void allNotesOff() override {}
    void chord(std::span<const std::uint8_t, 4>, std::uint32_t, bool) override {}
};

/// The audio side of a run. `start` and `sync` come from the user interface thread and the feeder in turn, never at
/// the same time.
class WavePorts {
public:
    virtual ~WavePorts() = default;
    /// Whether any port is set up at all.
    [[nodiscard]] virtual bool any() const = 0;
    /// Makes all ports ready, and paused, at this time of the song.
    virtual void prepare(CEditor& editor, std::uint32_t msec) = 0;
    virtual void restart() = 0;
    virtual void reset() = 0;
    virtual void close() = 0;
    /// Corrects the engine's clock by the audio clock.
    virtual void sync(std::uint32_t msec) = 0;
};

/// No audio.
class NoWaves final : public WavePorts {
public:
    bool any() const override { return false; }
    void prepare(CEditor&, std::uint32_t) override {}
    void restart() override {}
    void reset() override {}
    void close() override {}
    void sync(std::uint32_t) override {}
};

/// The ottava lines of the score, one cursor a track.
class OttavaCursors {
public:
    virtual ~OttavaCursors() = default;
    /// Puts all cursors at `tick`.
    virtual void locate(std::uint32_t tick) = 0;
    /// Semitones between a note at `tick` and the one that sounds beside it: 12, -12, or 0 for none.
    virtual int interval(int track, std::uint32_t tick) = 0;
};

/// No such lines.
class NoOttavas final : public OttavaCursors {
public:
    void locate(std::uint32_t) override {}
    int interval(int, std::uint32_t) override { return 0; }
};

/// Takes command strings for the media player of the system.
class MciPlayer {
public:
    virtual ~MciPlayer() = default;
    virtual void mciSendString(const char* command) = 0;
};

class NoMciPlayer final : public MciPlayer {
public:
    void mciSendString(const char*) override {}
};

} // namespace tessaro
