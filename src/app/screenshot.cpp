// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/screenshot.h"

#include "app/program.h"
#include "base/manual_clock.h"

#include <QCoreApplication>
#include <QPixmap>

namespace tessaro {
namespace {

constexpr QSize windowSize(1280, 800);
constexpr int frames = 90;
constexpr std::chrono::milliseconds frameTime(33);
constexpr int framesAPanelTimer = 3;

} // namespace

bool writeScreenshot(Program& program, ManualClock& clock, const QString& file)
{
    CMainFrame& frame = program.frame();
    frame.resize(windowSize);
    QCoreApplication::processEvents();

    // Somewhere in the midst, on a bar line.
    CEditor& editor = program.document().GetEditor();
    program.panel().SetLocation(static_cast<long>(editor.GetMeasTime(editor.GetTimeEnd() * 2 / 5)));
    program.panel().Start();
    for (int i = 1; i <= frames; ++i) {
        clock.sleepFor(frameTime);
        program.queue().drain();
        if (i % framesAPanelTimer == 0) program.panel().timer();
        frame.followPlay(static_cast<int>(frameTime.count()));
    }
    return frame.grab().save(file);
}

} // namespace tessaro
