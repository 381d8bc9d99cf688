// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_ops.h"
#include "base/real_clock.h"
#include "base/replacing_file.h"
#include "cli/armed_tracks.h"
#include "cli/commands.h"
#include "cli/console_user.h"
#include "cli/file_kind.h"
#include "cli/live_run.h"
#include "cli/player.h"
#include "core/edit/undo_scope.h"
#include "core/model/meta.h"
#include "platform/platform_midi.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace tessaro::cli {

namespace {

/// Whether saving could put a file there, as far as can be told now. Leaves nothing behind.
bool mayWrite(const std::string& path)
{
    SystemFiles files;
    const FileError error = ReplacingFile(path, files).error();
    if (error == FileError::none) return true;
    ConsoleUser(path).sentence(text(causeOf(error), languageFromEnvironment()), MessageKind::error);
    return false;
}

void setTempo(CEditor& editor, double beats)
{
    const auto micros = static_cast<std::uint32_t>(std::lround(60e6 / beats));
    const std::array<std::uint8_t, 3> bytes{static_cast<std::uint8_t>(micros >> 16U),
                                            static_cast<std::uint8_t>(micros >> 8U), static_cast<std::uint8_t>(micros)};
    const POSITION trk = editor.GetTrkPos(0);
    const POSITION blk = editor.GetHeadBlkPos(trk);
    const UndoScope step(editor, {});
    _EDT_EVNT rec;
    for (POSITION next = editor.GetHeadEvntPos(trk, blk), here = next; next; here = next) {
        if (!editor.GetNextEvnt(trk, blk, next, rec) || rec.metaType != meta::tempo) continue;
        rec.data = bytes.data();
        editor.SetEvnt(trk, blk, here, rec);
    }
}

/// The song to record into, with tempo and tracks as the options say. False when it failed, which has been shown.
bool openSong(Player& player, const RecordOptions& options)
{
    if (!options.with.empty()) return player.open(options.with);
    if (!player.doc().OnNewDocument()) return false;
    if (options.tempo > 0) setTempo(player.editor(), options.tempo);
    return true;
}

/// Ends a run whose input driver has gone.
class InputWatch {
public:
    InputWatch(PlatformMidi& midi, Player& player, UserPort& user, std::string driver) : m_midi(midi)
    {
        player.onDevicesChanged([this, &user, name = std::move(driver)](const Message&) {
            m_midi.refresh();
            const std::vector<std::string> inputs = m_midi.inputs();
            if (m_gone || std::find(inputs.begin(), inputs.end(), name) != inputs.end()) return;
            m_gone = true;
            user.sentence("The input " + name + " is gone; what it has sent is kept", MessageKind::error);
        });
        m_midi.setChangeListener(&player.messages());
    }
    ~InputWatch() { m_midi.setChangeListener(nullptr); }
    InputWatch(const InputWatch&) = delete;
    InputWatch& operator=(const InputWatch&) = delete;

    [[nodiscard]] bool gone() const noexcept { return m_gone; }

private:
    PlatformMidi& m_midi;
    bool m_gone = false;
};

/// `reached` is the tick up to which was recorded.
void tellSummary(const TakeSummary& take, std::uint32_t reached, const CEditor& editor)
{
    const std::uint32_t seconds = editor.TimeToMsecond(reached) / 1000;
    std::fprintf(stderr, "Recorded %zu events on %zu tracks, %u:%02u.\n", take.events, take.tracks, seconds / 60,
                 seconds % 60);
}

} // namespace

int runRecord(const RecordOptions& options)
{
    const auto kind = fileKindOf({}, options.out);
    if (!kind) {
        std::fprintf(stderr, "tessaro-cli: %s: the ending tells no kind of file; .TQM and .MID do\n",
                     options.out.c_str());
        return exitUsage;
    }
    if (!mayWrite(options.out)) return exitFailure;

    ConsoleUser user(options.with.empty() ? options.out : options.with);
    RealClock clock;
    PlatformMidi midi(clock);
    Player player(clock, midi, user);
    const auto in = driverOf(options.in, midi.inputs(), "input");
    const auto out = driverOf(options.playOut, midi.outputs(), "output");
    if (!in || !out) return exitUsage;
    if (!openSong(player, options)) return exitFailure;
    user.setFile(options.out);

    catchInterrupts();
    const std::size_t ports = options.with.empty() ? 0 : player.portCount();
    if (!player.startEngine(std::vector<std::int32_t>(ports, *out))) {
        user.message(TextId::midiOutFailed, MessageKind::error);
        return exitFailure;
    }
    if (!(options.sync ? player.followClock(*in) : player.openInput(*in))) {
        user.message(TextId::midiInFailed, MessageKind::error);
        return exitFailure;
    }
    if (ports > 0 && *out == 0) midi.waitForSound(std::chrono::seconds(3));

    ArmedTracks tracks(player.editor());
    if (tracks.empty()) {
        user.sentence("the song has no unused track", MessageKind::error);
        return exitFailure;
    }
    if (!tracks.takesAllChannels())
        user.sentence("too few unused tracks for all channels; the higher ones are left out", MessageKind::warning);
    const std::string driver = midi.inputs()[static_cast<std::size_t>(*in)];
    const InputWatch watch(midi, player, user, driver);

    CCnpWindow& panel = player.panel();
    panel.ShortCutRECClicked();
    panel.Start();
    if (panel.recorder().state() != RecState::recording) {
        user.sentence("recording could not begin", MessageKind::error);
        return exitFailure;
    }
    std::fprintf(stderr, "Recording from %s to tracks %s. %s\n", driver.c_str(), tracks.list().c_str(),
                 servicesInUse(midi, clock).c_str());
    const Nanos end = options.seconds > 0 ? clock.now() + Nanos(std::llround(options.seconds * 1e9)) : Nanos::max();
    std::uint32_t reached = 0;
    while (panel.IsRecButton() && clock.now() < end && !watch.gone() && !interrupted()) {
        handleMessages(player);
        panel.timer();
        reached = std::max(reached, player.smc().smcGetPlayCount());
    }
    panel.Stop();
    tellSummary(tracks.finish(), reached, player.editor());
    return player.doc().Save(options.out, *kind) && !user.failed() ? exitSuccess : exitFailure;
}

} // namespace tessaro::cli
