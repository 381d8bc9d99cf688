// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/scripted_program.h"

#include "app/program.h"
#include "app/silent_midi.h"
#include "base/manual_clock.h"
#include "core/fakes.h"
#include "files/native/cnv_evnt.h"
#include "views/clipboard/song_clipboard.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QTemporaryDir>

#include <iostream>
#include <sstream>
#include <string>

namespace tessaro::test {

namespace {

std::string hex(const std::vector<std::uint8_t>& bytes)
{
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()))
        .toHex()
        .toStdString();
}

class Script {
public:
    Script(CEditor& editor, const Strings& strings) : m_editor(editor), m_clipboard(editor, strings) {}

    std::string answer(const std::string& line)
    {
        std::istringstream in(line);
        std::string command;
        int track = 0;
        std::uint32_t number = 0;
        in >> command >> track >> number;
        if (command == "fill") return fill(track, number);
        if (command == "blks") return blks();
        if (command == "copyBlks") return m_clipboard.copyBlks(allBlks()) ? "copied" : "refused";
        if (command == "pasteBlks") return std::to_string(m_clipboard.pasteBlks(track, number).size());
        if (command == "copyEvnts") return copyEvnts(track);
        if (command == "pasteEvnts") return pasteEvnts(track, number);
        return "unknown";
    }

private:
    BlkRef firstBlk(int track)
    {
        const POSITION trk = m_editor.GetTrkPos(track);
        if (m_editor.SetTrkTypePrivate(track, trktype::midi)) m_editor.NewBlk(track, 0); // it was empty
        return {trk, m_editor.GetHeadBlkPos(trk)};
    }
    std::vector<BlkRef> allBlks()
    {
        std::vector<BlkRef> all;
        for (int n = 1; n < trackCount; ++n)
            for (CBlk* b = m_editor.song().trk(n)->blocks().head(); b; b = List<CBlk>::next(b))
                all.push_back({m_editor.GetTrkPos(n), b});
        return all;
    }
    std::string fill(int track, std::uint32_t notes)
    {
        CBlk& blk = *List<CBlk>::get(firstBlk(track).blk);
        for (std::uint32_t i = 0; i < notes; ++i) blk.InsEvnt(noteRec(i * 10, 5, static_cast<std::uint8_t>(i % 128)));
        blk.SetTimeEnd(notes * 10);
        return "filled";
    }
    std::string pasteEvnts(int track, std::uint32_t time)
    {
        return evnts(m_clipboard.pasteEvnts(track, time, [&] { return firstBlk(track); }));
    }
    std::string blks()
    {
        std::ostringstream out;
        for (const BlkRef& ref : allBlks()) {
            const CBlk& b = *List<CBlk>::get(ref.blk);
            std::vector<std::uint8_t> bytes;
            ByteWriter writer(bytes);
            CnvBlk(*b.GetRealBlk(), writer);
            out << Song::numberOf(ref.trk) << ' ' << b.GetTimeTop() << ' ' << b.GetTimeEnd() << ' ' << b.GetName()
                << ' ' << hex(bytes) << ';';
        }
        return out.str();
    }
    std::string copyEvnts(int track)
    {
        const BlkRef ref = firstBlk(track);
        std::vector<EvntRef> refs;
        for (POSITION e = m_editor.GetHeadEvntPos(ref.trk, ref.blk); e; e = e->next)
            refs.push_back({ref.trk, ref.blk, e});
        return m_clipboard.copyEvnts(refs) ? evnts(refs) : "refused";
    }
    static std::string evnts(const std::vector<EvntRef>& refs)
    {
        std::vector<std::uint8_t> bytes;
        ByteWriter writer(bytes);
        for (const EvntRef& ref : refs) {
            const CEvnt& e = *List<CEvnt>::get(ref.evnt);
            writer.u32be(e.GetTime());
            CnvEvnt(e, writer);
        }
        return std::to_string(refs.size()) + ' ' + hex(bytes);
    }

    CEditor& m_editor;
    SongClipboard m_clipboard;
};

} // namespace

int runScripted(int argc, char** argv)
{
    const QApplication app(argc, argv);
    const QTemporaryDir folder;
    const std::string home = folder.path().toStdString() + '/';
    ProfileStore store(home + "tessaro.ini");
    Strings strings(Language::english);
    ManualClock clock;
    SilentMidi midi("Silence");
    Program program(clock, midi, store, strings, {home, {}, QStringLiteral(TESSARO_SOURCE_DIR "/data/icons"), {}},
                    [] { return QString(); });
    program.user().showBox = [](const QString&, MessageKind) {};
    program.user().saveBox = [](const QString&) { return SaveAnswer::discard; };
    std::vector<std::string> arguments;
    if (argc > 2 && *argv[2]) arguments.emplace_back(argv[2]);
    if (!program.start(CommandLine::parse(arguments))) return 1;

    Script script(program.document().GetEditor(), strings);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&script] {
        std::string line;
        if (!std::getline(std::cin, line)) return QApplication::exit();
        std::cout << script.answer(line) << std::endl;
    });
    return QApplication::exec();
}

} // namespace tessaro::test
