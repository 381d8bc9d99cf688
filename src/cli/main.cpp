// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/commands.h"
#include "cli/file_kind.h"
#include "cli/position.h"
#include "cli/track_list.h"

#include <CLI/CLI.hpp>

#include <string>

namespace {

using namespace tessaro::cli;

const CLI::Validator position{
    [](std::string& text) { return isPosition(text) ? std::string() : text + " is no tick or measure:beat:tick"; },
    "TICK"};
const CLI::Validator trackList{
    [](std::string& text) { return tracksOf(text) ? std::string() : text + " is no list such as 1,3,5-8"; }, "TRKS"};

void addSong(CLI::App* command, std::string& file) { command->add_option("FILE", file, "Song to read")->required(); }

void addRange(CLI::App* command, std::string& from, std::string& to)
{
    command->add_option("--from", from, "Where to begin: a tick or measure:beat:tick")->check(position);
    command->add_option("--to", to, "Where to end, in the same form")->check(position);
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Tessaro's command: looks into songs, plays them and writes them out.", "tessaro-cli");
    app.require_subcommand(1);
    int result = exitSuccess;

    std::string file;
    CLI::App* info = app.add_subcommand("info", "Tell what a song is");
    addSong(info, file);
    info->callback([&] { result = runInfo(file); });

    CLI::App* dump = app.add_subcommand("dump", "Print the whole song, one JSON object a line");
    addSong(dump, file);
    dump->callback([&] { result = runDump(file); });

    ConvertOptions convert;
    CLI::App* convertCommand = app.add_subcommand("convert", "Write a song as a file of another kind");
    convertCommand->add_option("IN", convert.file, "Song to read")->required();
    convertCommand->add_option("OUT", convert.out, "File to write")->required();
    convertCommand
        ->add_option("--kind", convert.kind, "What to write; without it OUT's ending tells: .TQM native, .MID format 1")
        ->check(CLI::IsMember(fileKindNames()));
    convertCommand->callback([&] { result = runConvert(convert); });

    SimulateOptions simulate;
    CLI::App* simulateCommand =
        app.add_subcommand("simulate", "Play without sound or waiting: a line MS TICK PORT BYTES "
                                       "for each message");
    addSong(simulateCommand, simulate.file);
    addRange(simulateCommand, simulate.from, simulate.to);
    simulateCommand
        ->add_option("--loop", simulate.loop,
                     "Play round and round from A to B; ends after --to ticks in all (without it, "
                     "after as many as the song has)")
        ->expected(2)
        ->type_name("A B")
        ->check(position);
    simulateCommand->add_flag("--no-chase", simulate.noChase, "Send nothing of what stands before the start");
    simulateCommand->add_option("--mute", simulate.mute, "Tracks that are silent, such as 1,3,5-8")->check(trackList);
    simulateCommand->add_option("--solo", simulate.solo, "The one track that sounds")->check(CLI::Range(1, 100));
    simulateCommand->callback([&] { result = runSimulate(simulate); });

    RenderOptions render;
    CLI::App* renderCommand = app.add_subcommand("render", "Write a WAV file through the built-in synth");
    renderCommand->add_option("IN", render.file, "Song to read")->required();
    renderCommand->add_option("OUT", render.out, "WAV file to write")->required();
    renderCommand->add_option("--rate", render.rate, "Frames a second")
        ->check(CLI::Range(8000, 96000))
        ->capture_default_str();
    renderCommand->add_option("--soundfont", render.soundFont, "SoundFont file (.sf2, .sf3)");
    addRange(renderCommand, render.from, render.to);
    renderCommand->callback([&] { result = runRender(render); });

    PlayOptions play;
    CLI::App* playCommand = app.add_subcommand("play", "Play in real time");
    addSong(playCommand, play.file);
    playCommand->add_option("--out", play.out, "Output driver: its number or name in `devices`");
    CLI::Option* sync = playCommand->add_flag("--sync", play.sync, "Follow incoming MIDI clock, Start and Stop");
    playCommand->add_option("--in", play.in, "Input driver of the clock")->needs(sync);
    playCommand->add_flag("--lead", play.lead, "Send MIDI clock, Start and Stop")->excludes(sync);
    playCommand->add_option("--log", play.log,
                            "File for a line PLANNED ACTUAL TICK PORT BYTES for each message, times in "
                            "microseconds");
    playCommand->callback([&] { result = runPlay(play); });

    RecordOptions record;
    CLI::App* recordCommand = app.add_subcommand("record", "Record in real time, a track for each MIDI channel");
    recordCommand->add_option("OUT", record.out, "File to write, .TQM native, .MID format 1")->required();
    recordCommand->add_option("--in", record.in, "Input driver: its number or name in `devices`");
    recordCommand->add_option("--seconds", record.seconds, "How long, up to a day; without it until Ctrl-C")
        ->check(CLI::Range(0.001, 86400.0));
    CLI::Option* with =
        recordCommand->add_option("--with", record.with, "Song that plays meanwhile and is part of the result");
    recordCommand->add_option("--out", record.playOut, "Output driver of that song")->needs(with);
    recordCommand->add_option("--tempo", record.tempo, "Beats a minute of the new song")
        ->check(CLI::Range(4.0, 1000.0))
        ->excludes(with);
    recordCommand->add_flag("--sync", record.sync,
                            "Follow incoming MIDI clock: begins with its Start, ends with its Stop");
    recordCommand->callback([&] { result = runRecord(record); });

    app.add_subcommand("devices", "List the MIDI and audio devices")->callback([&] { result = runDevices(); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? exitSuccess : exitUsage;
    }
    return result;
}
