// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/program.h"
#include "base/manual_clock.h"
#include "core/edit/undo_scope.h"
#include "played_input.h"
#include "realtime/loom/midi_system.h"
#include "views/tracks/track_frame.h"
#include "views/tracks/trk_blk_view.h"
#include "views/tracks/trk_pram_view.h"
#include "views/widgets/tool_button.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace tessaro {

/// One output that counts the note-ons of each channel, and inputs to play on.
class CountingMidi final : public MidiSystem {
public:
    explicit CountingMidi(Clock& clock) : played(clock) {}

    std::array<int, 16> noteOns{};
    PlayedInputs played;

    void refresh() override {}
    std::vector<std::string> outputs() const override { return {"Test Synth"}; }
    std::vector<std::string> inputs() const override { return played.names; }
    std::unique_ptr<MidiOut> openOutput(std::size_t driver) override
    {
        return driver == 0 ? std::make_unique<Out>(noteOns) : nullptr;
    }
    std::unique_ptr<MidiIn> openInput(std::size_t driver, MidiInSink& sink, std::size_t) override
    {
        return played.open(driver, sink);
    }

private:
    struct Out final : MidiOut {
        explicit Out(std::array<int, 16>& counts) : m_counts(counts) {}
        bool send(std::span<const std::uint8_t> bytes, Nanos) noexcept override
        {
            if (bytes.size() == 3 && (bytes[0] & 0xF0U) == 0x90 && bytes[2] != 0) ++m_counts[bytes[0] & 0x0FU];
            return true;
        }
        std::array<int, 16>& m_counts;
    };
};

/// The whole window program in simulated time, with settings of its own; boxes are noted instead of shown.
class WindowTest : public testing::Test {
protected:
    /// The last time only the track window was open.
    WindowTest()
    {
        writeFile("tessaro.ini", "[Window Placement]\nChildren=\n");
        startProgram({});
    }

    void startProgram(const CommandLine& commandLine)
    {
        program.reset();
        store.reset();
        store = std::make_unique<ProfileStore>(path("tessaro.ini").toStdString());
        program = std::make_unique<Program>(
            clock, midi, *store, strings,
            ProgramFolders{path("").toStdString(),
                           {},
                           QStringLiteral(TESSARO_SOURCE_DIR "/data/icons"),
                           path("recovery").toStdString()},
            [] { return QStringLiteral("devices"); }, typedKeys);
        program->user().showBox = [this](const QString& line, MessageKind) { boxes << line; };
        program->user().saveBox = [this](const QString& line) {
            boxes << line;
            return saveAnswer;
        };
        ASSERT_TRUE(program->start(commandLine));
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frame()));
    }

    QString path(const QString& name) const { return folder.path() + '/' + name; }

    QString writeFile(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

    CMainFrame& frame() { return program->frame(); }
    CEditor& editor() { return program->document().GetEditor(); }
    /// Rows of tracks that hold blocks.
    std::size_t rows()
    {
        const auto used = [](const TrackRow& row) { return row.used; };
        return static_cast<std::size_t>(std::ranges::count_if(table().rows(), used));
    }

    QList<ToolButton*> buttons()
    {
        QList<ToolButton*> found;
        for (QAbstractButton* button : frame().findChildren<QAbstractButton*>())
            if (auto* ours = dynamic_cast<ToolButton*>(button)) found << ours;
        return found;
    }

    /// Lets the song play on.
    void advance(int milliseconds)
    {
        clock.sleepFor(std::chrono::milliseconds(milliseconds));
        program->queue().drain();
        program->panel().timer();
        frame().followPlay(milliseconds);
    }

    CTrkPramView& list() { return frame().trackFrame().pramView(); }
    TrackListModel& table() { return frame().trackFrame().table(); }
    CTrkBlkView& blks() { return frame().trackFrame().blkView(); }
    QModelIndex cell(int row, TrackColumn column) { return table().index(row, static_cast<int>(column)); }
    void clickCell(int row, TrackColumn column)
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(cell(row, column)).center());
    }

    /// Lets this act on the next dialog that waits for the user.
    template <class Dialog, class Act>
    void onDialog(Act act)
    {
        QTimer::singleShot(0, &frame(), [this, act] {
            auto* dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
            if (!dialog) return onDialog<Dialog>(act);
            dialog->activateWindow(); // else the window behind it has the keys
            EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == dialog; }));
            act(*dialog);
        });
    }

    /// A change that can be undone.
    void deleteFirstBlock(int track)
    {
        const UndoScope step(editor(), strings(TextId::undoBlockDelete).data());
        const POSITION trk = editor().GetTrkPos(track);
        ASSERT_TRUE(step && editor().BlkDel(trk, editor().GetHeadBlkPos(trk)));
    }

    static inline const QString song = QStringLiteral(TESSARO_SOURCE_DIR "/examples/harbour-lights.mid");

    QTemporaryDir folder;
    Strings strings{Language::english};
    ManualClock clock;
    CountingMidi midi{clock};
    PlayedKeys playedKeys{midi.played};
    TypedKeys* typedKeys = nullptr; ///< of the next start
    QStringList boxes;
    SaveAnswer saveAnswer = SaveAnswer::cancel; ///< to the question before a song goes
    std::unique_ptr<ProfileStore> store;
    std::unique_ptr<Program> program;
};

} // namespace tessaro
