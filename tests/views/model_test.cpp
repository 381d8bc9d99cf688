// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/profile_store.h"
#include "views/frame/user_settings.h"
#include "views/frame/window_placement.h"
#include "views/text/ui_text.h"
#include "views/tracks/track_list_model.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

class TrackListModelTest : public testing::Test {
protected:
    static std::vector<TrackRow> rows(std::initializer_list<int> tracks)
    {
        std::vector<TrackRow> made;
        for (const int track : tracks) {
            TrackRow row;
            row.track = track;
            made.push_back(row);
        }
        return made;
    }
    QModelIndex cell(int row, TrackColumn column) { return model.index(row, static_cast<int>(column)); }

    Strings strings{Language::english};
    UiText text{strings};
    TrackListModel model{text};
};

TEST_F(TrackListModelTest, TellsOnlyWhatDiffers)
{
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setRows(rows({1, 2, 9}));
    EXPECT_EQ(resets.size(), 1);

    auto changed = rows({1, 2, 9});
    changed[1].mute = true;
    model.setRows(changed);
    model.setRows(changed);
    EXPECT_EQ(resets.size(), 1);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex().row(), 1);

    Lights lights;
    lights.strike(9, 100);
    model.setLights(lights);
    model.setLights(lights);
    ASSERT_EQ(changes.size(), 2);
    EXPECT_EQ(changes[1][0].toModelIndex(), cell(2, TrackColumn::light));
    model.setRows(rows({1, 2})); // the light's row is gone
    EXPECT_EQ(resets.size(), 2);
    model.setLights(lights);
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(TrackListModelTest, SwitchesAskAndDoNotActThemselves)
{
    auto made = rows({7});
    made[0].solo = true;
    made[0].name = "\x83\x73\x83\x41\x83\x6d"; // a name in code page 932
    model.setRows(made);
    std::vector<std::pair<int, bool>> asked;
    model.onMute = model.onSolo = model.onRecord = [&](int track, bool on) { asked.emplace_back(track, on); };

    EXPECT_TRUE(model.setData(cell(0, TrackColumn::mute), Qt::Checked, Qt::CheckStateRole));
    EXPECT_TRUE(model.setData(cell(0, TrackColumn::solo), Qt::Checked, Qt::CheckStateRole)); // it is on
    EXPECT_FALSE(model.setData(cell(0, TrackColumn::name), Qt::Checked, Qt::CheckStateRole));
    model.toggle(cell(0, TrackColumn::solo));
    model.toggle(cell(0, TrackColumn::port));
    model.toggle(cell(0, TrackColumn::record));
    model.toggle({});
    EXPECT_EQ(asked, (std::vector<std::pair<int, bool>>{{7, true}, {7, false}, {7, true}}));
    EXPECT_FALSE(model.row(cell(0, TrackColumn::mute)).mute);
    EXPECT_EQ(cell(0, TrackColumn::name).data().toString(), QStringLiteral("ピアノ"));
}

class StoredTest : public testing::Test {
protected:
    QTemporaryDir folder;
    ProfileStore store{folder.filePath("tessaro.ini").toStdString()};
    const QSize screen{1920, 1080};
};

TEST_F(StoredTest, PlacementHoldsForOneScreenAndOnlyWhole)
{
    EXPECT_FALSE(loadPlacement(store, PlacedWindow::main, screen));
    const WindowPlacement place{QRect(-20, 0, 1020, 700), true};
    savePlacement(store, PlacedWindow::main, place, screen);
    EXPECT_EQ(loadPlacement(store, PlacedWindow::main, screen), place);
    EXPECT_FALSE(loadPlacement(store, PlacedWindow::main, QSize(1920, 1200)));
    EXPECT_FALSE(loadPlacement(store, PlacedWindow::main, QSize(1280, 1080)));
    for (const char* key : {"Main Flags", "Main ShowCmd", "Main Rect Left", "Main Rect Bottom"}) {
        savePlacement(store, PlacedWindow::main, place, screen);
        store.remove("Window Placement", key);
        EXPECT_FALSE(loadPlacement(store, PlacedWindow::main, screen)) << key;
        store.setInt("Window Placement", key, -3000);
        EXPECT_FALSE(loadPlacement(store, PlacedWindow::main, screen)) << key;
    }
}

TEST_F(StoredTest, ThePanelHasAPlaceOfItsOwn)
{
    const WindowPlacement main{QRect(1, 2, 2, 2)};
    const WindowPlacement panel{QRect(5, 6, 2, 2)};
    savePlacement(store, PlacedWindow::main, main, screen);
    savePlacement(store, PlacedWindow::panel, panel, screen);
    EXPECT_EQ(loadPlacement(store, PlacedWindow::main, screen), main);
    EXPECT_EQ(loadPlacement(store, PlacedWindow::panel, screen), panel);
    store.remove("Window Placement", "Cnp MaxPos y");
    EXPECT_FALSE(loadPlacement(store, PlacedWindow::panel, screen));
}

TEST_F(StoredTest, StrangeChoicesFallBackToTheDesktop)
{
    UserSettings settings(store);
    EXPECT_EQ(settings.appearance(), Appearance::desktop);
    settings.setAppearance(Appearance::dark);
    EXPECT_EQ(settings.appearance(), Appearance::dark);
    store.setInt("User Settings", "Appearance", 77);
    EXPECT_EQ(settings.appearance(), Appearance::desktop);
    settings.setLanguageNumber(static_cast<int>(Language::japanese));
    EXPECT_EQ(settings.language(), Language::japanese);
    settings.setLanguageNumber(77);
    EXPECT_EQ(settings.language(), languageFromEnvironment());
}

} // namespace
} // namespace tessaro
