// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/setup/choice_box.h"
#include "views/setup/controllers_dialog.h"
#include "views/setup/detection_dialog.h"
#include "views/setup/driver_list_view.h"
#include "views/setup/metronome_dialog.h"
#include "views/setup/position_box.h"
#include "views/setup/setup_sheet.h"
#include "views/setup/sys_dev_page.h"
#include "views/setup/sys_rec_dialog.h"
#include "window_fixture.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

namespace tessaro {
namespace {

using Ports = std::vector<std::int32_t>;

/// A button of a window by its name.
QAbstractButton& button(const QWidget& window, const QString& name)
{
    for (QAbstractButton* found : window.findChildren<QAbstractButton*>())
        if (found->text() == name) return *found;
    throw std::runtime_error("no button " + name.toStdString());
}

// The page of devices

class DevicePageTest : public testing::Test {
protected:
    DevicePageTest()
    {
        settings.midiOut = {2, 0};
        settings.midiThru = 1;
        settings.midiIn = 1;
        page.emplace(settings, SetupDrivers{{"A", "B", "C"}, {"X", "Y"}, {}, {}}, text);
        page->resize(500, 500);
        page->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*page));
    }

    Settings applied()
    {
        page->apply(settings);
        return settings;
    }
    void drag(int row, int place)
    {
        DriverListView& list = page->midiOut();
        const auto middle = [&](int at) {
            return QPoint(100, list.visualItemRect(list.topLevelItem(0)).center().y()
                                   + at * list.visualItemRect(list.topLevelItem(0)).height());
        };
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, middle(row));
        EXPECT_EQ(list.viewport()->cursor().shape(), Qt::ClosedHandCursor);
        QTest::mouseMove(list.viewport(), middle(place));
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, middle(place));
        EXPECT_EQ(list.viewport()->cursor().shape(), Qt::ArrowCursor);
    }

    Strings strings{Language::english};
    UiText text{strings};
    Settings settings;
    std::optional<CSysDevPropPage> page;
};

TEST_F(DevicePageTest, RowsAreCheckedAndMovedByKeysAndMouse)
{
    DriverListView& list = page->midiOut();
    EXPECT_EQ(applied().midiOut, (Ports{2, 0}));
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(applied().midiOut, (Ports{0, 2}));
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Space); // the last one, B
    EXPECT_EQ(applied().midiOut, (Ports{0, 2, 1}));
    drag(2, 0);
    EXPECT_EQ(applied().midiOut, (Ports{1, 0, 2}));
    drag(0, 2);
    EXPECT_EQ(applied().midiOut, (Ports{0, 1, 2}));
    drag(0, 3); // behind the last
    EXPECT_EQ(applied().midiOut, (Ports{1, 2, 0}));
    const QRect first = list.visualItemRect(list.topLevelItem(0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(first.left() + 10, first.center().y()));
    EXPECT_EQ(applied().midiOut, (Ports{2, 0}));
    EXPECT_EQ(list.currentIndex().row(), 0);
    QTest::mouseClick(&button(*page, "Up"), Qt::LeftButton);
    EXPECT_EQ(list.topLevelItem(0)->text(0), "B") << "there is nothing above it";
    QTest::mouseClick(&button(*page, "Down"), Qt::LeftButton);
    EXPECT_EQ(list.topLevelItem(1)->text(0), "B");
}

TEST_F(DevicePageTest, ThruOffersThePortsAndStaysWithItsDriver)
{
    ChoiceBox& thru = page->thru();
    EXPECT_EQ(thru.currentText(), "2: A");
    QTest::keyClick(&page->midiOut(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(thru.currentText(), "1: A");
    EXPECT_EQ(applied().midiThru, 0);
    page->midiOut().topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(thru.currentText(), "---");
    EXPECT_EQ(thru.count(), 2);
    EXPECT_EQ(applied().midiThru, 0x80);
    QTest::keyClick(&thru, Qt::Key_Up);
    EXPECT_EQ(applied().midiThru, 0);
    EXPECT_EQ(settings.midiIn, 1);
    page->midiIn().choose(0x80);
    EXPECT_EQ(applied().midiIn, 0x80);
}

TEST_F(DevicePageTest, OutputsWithAModuleBecomeTheFirstPorts)
{
    std::optional<std::vector<int>> found;
    page->setDetection([&] { return found; });
    QAbstractButton& detect = button(*page, text(TextId::deviceDetect));
    detect.click();
    EXPECT_EQ(applied().midiOut, (Ports{2, 0}));
    found = {1};
    detect.click();
    EXPECT_EQ(applied().midiOut, (Ports{1, 2, 0}));
    EXPECT_EQ(page->thru().currentText(), "3: A");
}

// The sheet

class SetupTest : public WindowTest {
protected:
    void SetUp() override { midi.noteOns.fill(0); }

    const Settings& settings() { return program->app().GetSettings(); }

    /// Shows a dialog by its command, lets this act on it, and closes it.
    template <class Dialog, class Act>
    void with(QAction& command, Act act, Qt::Key end = Qt::Key_Return)
    {
        bool seen = false;
        onDialog<Dialog>([&](Dialog& dialog) {
            seen = true;
            EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &dialog; }));
            act(dialog);
            if (end == Qt::Key_Escape)
                QTest::keyClick(&dialog, end);
            else
                dialog.accept();
        });
        command.trigger();
        EXPECT_TRUE(seen);
    }
};

TEST_F(SetupTest, EveryPageIsReachedAndChangedByKeys)
{
    const auto change = [&](SetupSheet& sheet) {
        QListWidget& list = sheet.pageList();
        EXPECT_EQ(sheet.focusWidget(), &list);
        const auto check = [&](const QString& name) {
            QWidget& box = button(sheet.page(list.currentRow()), name);
            EXPECT_TRUE(box.isVisible());
            box.setFocus();
            QTest::keyClick(&box, Qt::Key_Space);
        };
        const auto down = [&](QWidget& box) { QTest::keyClick(&box, Qt::Key_Down); };
        const auto choices = [&] { return sheet.page(list.currentRow()).findChildren<QComboBox*>(); };
        QTest::keyClick(&list, Qt::Key_Down);
        check("Note");
        QTest::keyClick(&sheet, Qt::Key_PageDown, Qt::ControlModifier);
        check("Poly After Touch");
        QTest::keyClick(&sheet, Qt::Key_PageDown, Qt::ControlModifier);
        check("Realtime Message");
        QTest::keyClick(&sheet, Qt::Key_PageDown, Qt::ControlModifier);
        check("MIDI");
        QTest::keyClick(&sheet, Qt::Key_PageDown, Qt::ControlModifier);
        QTest::keyClick(choices().at(0), Qt::Key_Up);
        QTest::keyClick(&sheet, Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_EQ(choices().at(0)->currentText(), "8192 bytes");
        for (QComboBox* box : choices()) down(*box);
        QTest::keyClick(&sheet, Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_EQ(list.currentRow(), 6) << "there is no page behind the last";
    };
    const Settings before = settings();
    writeFile("ws.ini", "[Sysex Size]\n0=512\n1=8192\n2=65536\n[Sysex Out Size]\n0=4096\n1=16384\n2=32768\n"
                        "[Sysex Out Int]\n0=1000\n1=2000\n");
    frame().openFile(song);
    program->panel().Start();
    with<SetupSheet>(frame().actions().systemSetup, change, Qt::Key_Escape);
    EXPECT_EQ(settings().outFilter.drop, before.outFilter.drop);
    EXPECT_EQ(settings().sync, 0);
    EXPECT_FALSE(program->panel().GetPlayBtn()) << "stopped before the devices were looked for";

    with<SetupSheet>(frame().actions().systemSetup, change);
    EXPECT_EQ(settings().outFilter.drop[FilterSwitches::note], 1);
    EXPECT_EQ(settings().thruFilter.drop[FilterSwitches::poly], 1);
    EXPECT_EQ(settings().inFilter.drop[FilterSwitches::realTime], 1);
    EXPECT_EQ(settings().sync, 1);
    EXPECT_EQ(settings().wavInFmt, 10);
    EXPECT_EQ(settings().sysexSize, 65536);
    EXPECT_EQ(settings().sysexOutSize, 32768) << "16384 is the first that holds 8192; one further";
    EXPECT_EQ(settings().sysexOutInt, 2000) << "the last";
    EXPECT_EQ(settings().midiOut, before.midiOut);
    EXPECT_EQ(store->getInt("System", "Midi Out Fltr Note", 0), 1);
}

TEST_F(SetupTest, SettingsWithoutAChoiceStayAsTheyAre)
{
    store->setInt("System", "Wav In Fmt", 99);
    store->setInt("System", "Sysex Size", 1 << 20);
    with<SetupSheet>(frame().actions().systemSetup, [](SetupSheet&) {});
    EXPECT_EQ(settings().wavInFmt, 99);
    EXPECT_EQ(settings().sysexSize, 1 << 20);
}

TEST_F(SetupTest, ControllersAreChosenOneByOne)
{
    with<SetupSheet>(frame().actions().systemSetup, [&](SetupSheet& sheet) {
        sheet.pageList().setCurrentRow(3);
        QWidget& page = sheet.page(3);
        auto& all = dynamic_cast<QCheckBox&>(button(page, "Control Change"));
        const auto uncheck = [&](TextId list, int controller) {
            onDialog<ControllersDialog>([=](ControllersDialog& dialog) {
                const QList<QCheckBox*> switches = dialog.findChildren<QCheckBox*>();
                EXPECT_EQ(switches.size(), 64);
                EXPECT_TRUE(switches.at(controller)->isChecked());
                switches.at(controller)->click();
                dialog.accept();
            });
            button(page, program->text()(list)).click();
        };
        all.click();
        EXPECT_EQ(all.checkState(), Qt::Checked);
        uncheck(TextId::controllersFirst, 7);
        EXPECT_EQ(all.checkState(), Qt::PartiallyChecked);
        uncheck(TextId::controllersSecond, 0);
    });
    EXPECT_EQ(settings().inFilter.drop[FilterSwitches::control], 2);
    EXPECT_EQ(settings().inController[6], 1);
    EXPECT_EQ(settings().inController[7], 0);
    EXPECT_EQ(settings().inController[64], 0);
    EXPECT_EQ(settings().inMask() & 0x08, 0U);
    with<SetupSheet>(frame().actions().systemSetup, [&](SetupSheet& sheet) {
        auto& all = dynamic_cast<QCheckBox&>(button(sheet.page(3), "Control Change"));
        EXPECT_EQ(all.checkState(), Qt::PartiallyChecked);
        all.click();
        EXPECT_EQ(all.checkState(), Qt::Unchecked);
    });
    EXPECT_EQ(settings().inController, (std::array<std::uint8_t, 128>{}));
}

TEST_F(SetupTest, TooManyDriversShutThePageOfDevices)
{
    QStringList many;
    for (int i = 0; i < 129; ++i) many << QString::number(i);
    const ProfileStore none(path("none.ini").toStdString());
    Settings settings;
    settings.midiOut = {3, 128};
    for (const bool wave : {false, true}) {
        const SetupSheet sheet(settings, wave ? SetupDrivers{{}, {}, many, {}} : SetupDrivers{many, {}, {}, {}}, none,
                               program->text());
        EXPECT_FALSE(sheet.devicePage());
        EXPECT_EQ(sheet.pageList().currentRow(), 1);
        EXPECT_EQ(sheet.settings().midiOut, settings.midiOut);
    }
    many.removeLast();
    EXPECT_TRUE(SetupSheet(settings, {many, {}, {}, {}}, none, program->text()).devicePage());
}

TEST_F(SetupTest, DetectionShowsItsRowsAndGivesUp)
{
    for (const bool cancel : {false, true}) {
        with<SetupSheet>(frame().actions().systemSetup, [&](SetupSheet& sheet) {
            onDialog<DetectionDialog>([cancel](DetectionDialog& dialog) {
                QPushButton& ok = *dialog.buttons().button(QDialogButtonBox::Ok);
                EXPECT_FALSE(ok.isEnabled());
                if (cancel) {
                    QTest::keyClick(&dialog, Qt::Key_Escape);
                    return;
                }
                EXPECT_TRUE(QTest::qWaitFor([&] { return ok.isEnabled(); }));
                ASSERT_EQ(dialog.rows().topLevelItemCount(), 1);
                EXPECT_EQ(dialog.rows().topLevelItem(0)->text(2), "---");
                ok.click();
            });
            button(sheet, program->text()(TextId::deviceDetect)).click();
        });
        EXPECT_EQ(settings().midiOut, (Ports{0}));
        EXPECT_EQ(program->app().SendShortMsg(0, 0x90, 60, 1), 0U) << "the ports are open again";
    }
}

// Record and play settings

TEST_F(SetupTest, RecordSettingsAreTakenWithOk)
{
    const auto change = [&](CSysRecDlg& dialog) {
        EXPECT_FALSE(dialog.punchIn().isEnabled());
        dialog.realMode().choose(2);
        EXPECT_TRUE(dialog.punchOut().isEnabled());
        const auto type = [](PositionBox& box, const QString& position) {
            box.selectAll();
            QTest::keyClicks(&box, position);
            QTest::keyClick(&box, Qt::Key_Return);
            return box.text();
        };
        EXPECT_EQ(type(dialog.punchIn(), "3:2"), "0003:2:000");
        EXPECT_EQ(dialog.punchOut().text(), "0003:2:000") << "pushed along";
        EXPECT_EQ(type(dialog.punchOut(), "0"), "0003:2:000") << "no such bar";
        QTest::keyClick(&dialog.punchOut(), Qt::Key_Up);
        EXPECT_EQ(dialog.punchOut().text(), "0004:2:000");
        type(dialog.loopEnd(), "5");
        type(dialog.loopStart(), "2");
        button(dialog, program->text()(TextId::recordMidiChase)).click();
        button(dialog, program->text()(TextId::recordViewChase)).click();
        dialog.findChild<QSpinBox*>()->setValue(2);
        dialog.step().click();
        EXPECT_FALSE(dialog.realMode().isEnabled());
        EXPECT_FALSE(dialog.punchIn().isEnabled());
        EXPECT_TRUE(dialog.loopStart().isEnabled());
    };
    const RecordPlaySettings before = program->app().GetRecordSettings();
    with<CSysRecDlg>(frame().actions().recordSettings, change, Qt::Key_Escape);
    EXPECT_EQ(program->app().GetRecordSettings(), before);

    with<CSysRecDlg>(frame().actions().recordSettings, change);
    const RecordPlaySettings now = program->app().GetRecordSettings();
    EXPECT_EQ(now.recMode, 1);
    EXPECT_EQ(now.realMode, 2);
    EXPECT_EQ(now.punchIn, 2 * 1920 + 480);
    EXPECT_EQ(now.punchOut, 3 * 1920 + 480);
    EXPECT_EQ(now.countInMeas, 2);
    EXPECT_EQ(now.waveDir, before.waveDir);
    EXPECT_NE(now.midiChase, before.midiChase);
    EXPECT_EQ(program->panel().GetMIDIChase(), now.midiChase != 0);
    EXPECT_EQ(program->panel().GetViewChase(), now.viewChase != 0);
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    EXPECT_FALSE(program->panel().GetLoop(start, end));
    EXPECT_EQ(std::pair(start, end), std::pair(1920U, 4 * 1920U));
}

// The metronome

TEST_F(SetupTest, TheMetronomeIsHeardAndKeptWithOk)
{
    const auto change = [&](MetronomeDialog& dialog) {
        EXPECT_EQ(dialog.port().currentText(), "---") << "port 2 is not there";
        dialog.port().choose(0);
        dialog.channel().setValue(3);
        dialog.listenButton().click();
        EXPECT_TRUE(QTest::qWaitFor([&] {
            clock.sleepFor(std::chrono::milliseconds(10));
            return midi.noteOns[2] > 0;
        }));
    };
    const MetronomeSettings before = program->app().GetMetronome();
    with<MetronomeDialog>(frame().actions().metronomeSettings, [](MetronomeDialog&) {});
    EXPECT_EQ(program->app().GetMetronome(), before) << "also the port that is not there";
    with<MetronomeDialog>(frame().actions().metronomeSettings, change, Qt::Key_Escape);
    EXPECT_EQ(program->app().GetMetronome(), before);
    with<MetronomeDialog>(frame().actions().metronomeSettings, change);
    EXPECT_EQ(program->app().GetMetronome().port, 0);
    EXPECT_EQ(program->app().GetMetronome().channel, 2);
}

} // namespace
} // namespace tessaro
