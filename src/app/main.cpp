// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/device_sentence.h"
#include "app/program.h"
#include "app/screenshot.h"
#include "app/silent_midi.h"
#include "app/start_options.h"
#include "base/file.h"
#include "base/manual_clock.h"
#include "base/real_clock.h"
#include "core/doc/app_directory.h"
#include "core/doc/recovery.h"
#include "platform/platform_midi.h"
#include "views/frame/user_settings.h"

#include <QApplication>

#include <cstdio>
#include <filesystem>

using namespace tessaro;

namespace {

std::string dataFolderOfProgram() { return programFolder() + "/../share/tessaro"; }

ProgramFolders programFolders()
{
    const std::string data = dataFolderOfProgram();
    return {prepareAppDirectory({programFolder(), data, dataFolder()}), InstanceLock::defaultFolder(),
            QString::fromStdString(data + "/icons"), recoveryFolder()};
}

void choose(Program& program, const StartOptions& options)
{
    if (options.language) program.text().setLanguage(*options.language);
    if (options.appearance) program.theme().setAppearance(*options.appearance);
}

int run(const StartOptions& options)
{
    ProfileStore store(userSettingsPath());
    Strings strings(UserSettings(store).language());
    RealClock clock;
    PlatformMidi midi(clock);
    const UiText text(strings);
    const auto sentence = [&] {
        return deviceSentence(text, midi.soundStatus(), midi.midiServices(), clock.realtimeGranted());
    };
    Program program(clock, midi, store, strings, programFolders(), sentence, &midi.typedKeys());
    choose(program, options);
    midi.setChangeListener(&program.queue());
    const int result = program.start(options.document) ? QApplication::exec() : 1;
    midi.setChangeListener(nullptr);
    return result;
}

/// In simulated time, without devices, and without touching the settings of the person.
int takePicture(const StartOptions& options)
{
    const std::string folder = std::filesystem::temp_directory_path() / ("tessaro-" + std::to_string(getpid()));
    makeFolders(folder);
    int result = 1;
    {
        ProfileStore store(folder + "/tessaro.ini");
        UserSettings(store).setOpensLastWindows(false);
        store.setString("System", "Wave Dir", "/home/music/");
        Strings strings(languageFromEnvironment());
        ManualClock clock;
        SilentMidi midi("Tessaro Synth");
        const UiText text(strings);
        const ProgramFolders folders{folder + "/", {}, QString::fromStdString(dataFolderOfProgram() + "/icons"), {}};
        Program program(clock, midi, store, strings, folders, [&] { return text(TextId::soundReady); });
        program.user().showBox = [&](const QString& line, MessageKind) {
            std::fprintf(stderr, "%s\n", qPrintable(line));
        };
        program.user().askBox = [](const QString&) { return false; };
        program.user().saveBox = [](const QString&) { return SaveAnswer::discard; };
        choose(program, options);
        if (program.start(options.document) && writeScreenshot(program, clock, options.screenshot, options.windows))
            result = 0;
    }
    std::error_code error;
    std::filesystem::remove_all(folder, error);
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication::setApplicationName(QStringLiteral("tessaro"));
    QApplication::setApplicationDisplayName(QStringLiteral("Tessaro"));
    QApplication::setApplicationVersion(QStringLiteral(TESSARO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("tessaro"));
    const QApplication application(argc, argv);
    const StartOptions options = readStartOptions();
    return options.screenshot.isEmpty() ? run(options) : takePicture(options);
}
