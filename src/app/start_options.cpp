// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start_options.h"

#include "app/screenshot.h"
#include "base/strings.h"
#include "views/theme/theme.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

namespace tessaro {
namespace {

QCommandLineOption option(const char* name, const char* description, const char* value)
{
    return {QString::fromLatin1(name), QString::fromLatin1(description), QString::fromLatin1(value)};
}

} // namespace

StartOptions readStartOptions()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("MIDI and audio sequencer."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("song"), QStringLiteral("Song file to open."),
                                 QStringLiteral("[song]"));
    const QCommandLineOption screenshot =
        option("screenshot", "Write a picture of the playing window and exit.", "png");
    const QCommandLineOption windows = option(
        "windows",
        "Windows of the picture, with commas between: track, piano, drum, list, master, history; or one of edits, "
        "pages, setup and keys for what opens over them. Without track the last one fills the window. QT_SCALE_FACTOR "
        "enlarges all.",
        "list");
    const QCommandLineOption theme = option("theme", "Colours: light or dark.", "theme");
    const QCommandLineOption lang = option("lang", "Language: ja or en.", "language");
    parser.addOptions({screenshot, windows, theme, lang});
    parser.process(*QCoreApplication::instance());

    const auto choose = [&](const QCommandLineOption& which, const QString& first, const QString& second, auto a,
                            auto b) {
        std::optional<decltype(a)> chosen;
        const QString value = parser.value(which);
        if (value == first)
            chosen = a;
        else if (value == second)
            chosen = b;
        else if (parser.isSet(which))
            parser.showHelp(2);
        return chosen;
    };
    StartOptions options;
    options.appearance =
        choose(theme, QStringLiteral("light"), QStringLiteral("dark"), Appearance::light, Appearance::dark);
    options.language = choose(lang, QStringLiteral("ja"), QStringLiteral("en"), Language::japanese, Language::english);
    options.screenshot = parser.value(screenshot);
    options.windows = parser.value(windows).split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (!knowsPictured(options.windows)) parser.showHelp(2);
    std::vector<std::string> files;
    for (const QString& argument : parser.positionalArguments())
        files.push_back(QFileInfo(argument).absoluteFilePath().toStdString());
    options.document = CommandLine::parse(files);
    return options;
}

} // namespace tessaro
