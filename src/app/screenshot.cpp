// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/screenshot.h"

#include "app/panel_pictures.h"
#include "app/program.h"
#include "base/manual_clock.h"
#include "views/frame/editor_windows.h"
#include "views/tracks/track_frame.h"

#include <QCoreApplication>
#include <QPixmap>

#include <algorithm>
#include <map>

namespace tessaro {
namespace {

constexpr QSize windowSize(1280, 800);
constexpr int frames = 90;
constexpr std::chrono::milliseconds frameTime(33);
constexpr int framesAPanelTimer = 3;
constexpr std::uint8_t drumChannel = 9;
constexpr int lastTrack = 100;
constexpr int stepTrack = 12;

const QString tracksName = QStringLiteral("track");
const QString historyName = QStringLiteral("history");
const std::map<QString, WindowKind> kinds{{tracksName, WindowKind::track},
                                          {QStringLiteral("piano"), WindowKind::piano},
                                          {QStringLiteral("drum"), WindowKind::drum},
                                          {QStringLiteral("list"), WindowKind::eventList},
                                          {QStringLiteral("master"), WindowKind::masterTrack}};

/// The first with blocks, that plays drums or does not; the first of all where there is none.
int trackToShow(const CEditor& song, bool drums)
{
    for (int track = 1; track <= lastTrack; ++track) {
        _EDT_TRKINFO info;
        if (song.GetHeadBlkPos(track) && song.GetTrkInfo(track, info) && (info.ch == drumChannel) == drums)
            return track;
    }
    return 1;
}

/// Some steps with the last of them undone.
void showHistory(CMainFrame& frame)
{
    frame.actions().history.trigger();
    CTrackFrame& tracks = frame.trackFrame();
    tracks.setCurrentTrack(stepTrack);
    for (const auto command : {ViewCommand::newBlock, ViewCommand::duplicate, ViewCommand::remove}) tracks.run(command);
    frame.actions().undo.trigger();
}

void openWindows(Program& program, const QStringList& names)
{
    EditorWindows& windows = program.frame().windows();
    for (const QString& name : names) {
        if (name == historyName) showHistory(program.frame());
        if (const auto kind = kinds.find(name); kind != kinds.end())
            windows.open(kind->second, trackToShow(program.document().GetEditor(), kind->second == WindowKind::drum));
    }
    if (windows.windows().size() > 1 && !names.contains(tracksName)) windows.maximiseActive();
}

/// Some bars from somewhere in the midst, on a bar line.
void play(Program& program, ManualClock& clock)
{
    CEditor& editor = program.document().GetEditor();
    program.panel().SetLocation(static_cast<long>(editor.GetMeasTime(editor.GetTimeEnd() * 2 / 5)));
    program.panel().Start();
    for (int i = 1; i <= frames; ++i) {
        clock.sleepFor(frameTime);
        program.queue().drain();
        if (i % framesAPanelTimer == 0) program.panel().timer();
        program.frame().followPlay(static_cast<int>(frameTime.count()));
    }
}

} // namespace

bool knowsPictured(const QStringList& windows)
{
    return std::ranges::all_of(
        windows, [](const QString& name) { return kinds.contains(name) || name == historyName || knowsPanels(name); });
}

bool writeScreenshot(Program& program, ManualClock& clock, const QString& file, const QStringList& windows)
{
    CMainFrame& frame = program.frame();
    frame.resize(windowSize);
    openWindows(program, windows);
    QCoreApplication::processEvents();
    play(program, clock);
    QCoreApplication::processEvents();
    const auto panels = std::ranges::find_if(windows, knowsPanels);
    return (panels == windows.end() ? frame.grab() : panelPicture(program, *panels)).save(file);
}

} // namespace tessaro
