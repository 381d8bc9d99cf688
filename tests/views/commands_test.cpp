// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/doc/profile_store.h"
#include "views/commands/key_field.h"
#include "views/commands/keys_dialog.h"
#include "views/text/ui_text.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace tessaro {
namespace {

using Keys = QList<QKeySequence>;

/// Three commands.
class KeysTest : public testing::Test {
protected:
    KeysTest()
    {
        cut.setShortcut(QKeySequence("Ctrl+X"));
        redo.setShortcuts({QKeySequence("Ctrl+Y"), QKeySequence("Ctrl+Shift+Z")});
        commands.add("about", TextId::commandAbout, about);
        commands.add("cut", TextId::commandCut, cut);
        commands.add("redo", TextId::menuRedo, redo);
        commands.arrange({{TextId::menuEdit, {&redo, &cut}}, {TextId::menuHelp, {&about}}});
        start();
    }
    /// As at the next start of the program.
    void start()
    {
        map.reset();
        for (const Command& command : commands.all()) command.action->setShortcuts(command.usualKeys);
        map.emplace(commands, store);
    }
    const Command& command(const char* id) const { return *std::ranges::find(commands.all(), id, &Command::id); }
    std::string stored(const char* id) const { return store.getString("Keys", id, ""); }

    QTemporaryDir folder;
    ProfileStore store{folder.filePath("settings.ini").toStdString()};
    Strings strings{Language::english};
    UiText text{strings};
    QAction cut;
    QAction redo;
    QAction about;
    CommandList commands;
    std::optional<KeyMap> map;
};

TEST_F(KeysTest, GroupsStandTogetherInTheirOrder)
{
    std::vector<std::pair<std::string, TextId>> found;
    for (const Command& each : commands.all()) found.emplace_back(each.id, each.group);
    EXPECT_EQ(found, (std::vector<std::pair<std::string, TextId>>{
                         {"redo", TextId::menuEdit}, {"cut", TextId::menuEdit}, {"about", TextId::menuHelp}}));
}

TEST_F(KeysTest, OnlyWhatDiffersIsKept)
{
    map->setKeys(command("about"), {QKeySequence("F12")});
    map->setKeys(command("cut"), {});
    EXPECT_EQ(stored("about"), "F12");
    EXPECT_EQ(stored("redo"), "");
    start();
    EXPECT_EQ(about.shortcut(), QKeySequence("F12"));
    EXPECT_TRUE(cut.shortcuts().isEmpty());
    map->reset(command("cut"));
    EXPECT_EQ(stored("cut"), "");
    map->resetAll();
    EXPECT_EQ(stored("about"), "");
    EXPECT_TRUE(about.shortcuts().isEmpty());
}

TEST_F(KeysTest, AKeyMeansOneThing)
{
    map->setKeys(command("about"), {QKeySequence("Ctrl+Y"), QKeySequence("F12")});
    EXPECT_EQ(redo.shortcuts(), Keys{QKeySequence("Ctrl+Shift+Z")});
    start();
    EXPECT_EQ(map->owner(QKeySequence("Ctrl+Y")), &command("about"));
    map->reset(command("redo"));
    EXPECT_EQ(redo.shortcuts(), Keys{QKeySequence("Ctrl+Shift+Z")}) << "the other key was given away";

    // Settings that say otherwise, as an edited file may.
    store.setString("Keys", "about", "Ctrl+X; nonsense+key;");
    store.setString("Keys", "redo", "Ctrl+X");
    start();
    int owners = 0;
    for (const Command& each : commands.all()) owners += KeyMap::keys(each).contains(QKeySequence("Ctrl+X"));
    EXPECT_EQ(owners, 1);
}

TEST_F(KeysTest, AFieldTakesKeysInPlaceOfLetters)
{
    KeyField field;
    field.show();
    struct Case {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* taken;
    };
    const Case cases[] = {{Qt::Key_A, Qt::NoModifier, "A"},
                          {Qt::Key_Shift, Qt::ShiftModifier, "A"}, // alone it is no key
                          {Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier, "Ctrl+Shift+Up"},
                          {Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier, "Ctrl++"},
                          {Qt::Key_Space, Qt::ShiftModifier, "Shift+Space"},
                          {Qt::Key_4, Qt::KeypadModifier, "4"},
                          {Qt::Key_Tab, Qt::ControlModifier, "Ctrl+Tab"},
                          {Qt::Key_Return, Qt::AltModifier, "Alt+Return"},
                          {Qt::Key_Return, Qt::NoModifier, "Alt+Return"}, // for the window
                          {Qt::Key_Backspace, Qt::NoModifier, ""}};
    for (const auto& [key, modifiers, taken] : cases) {
        QTest::keyClick(&field, key, modifiers);
        EXPECT_EQ(field.key().toString(QKeySequence::PortableText).toStdString(), taken) << int{key};
    }
}

TEST_F(KeysTest, TheDialogFindsByNameAndByKey)
{
    KeysDialog dialog(*map, text, nullptr);
    dialog.show();
    const auto shown = [&] {
        QStringList names;
        for (int g = 0; g < dialog.table().topLevelItemCount(); ++g) {
            const QTreeWidgetItem* group = dialog.table().topLevelItem(g);
            for (int i = 0; !group->isHidden() && i < group->childCount(); ++i)
                if (!group->child(i)->isHidden()) names << group->child(i)->text(0);
        }
        return names;
    };
    EXPECT_EQ(shown().size(), 3);
    QTest::keyClicks(&dialog.search(), "cU");
    EXPECT_EQ(shown(), QStringList{"Cut"});
    dialog.search().clear();
    QTest::keyClick(&dialog.keySearch(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown(), QStringList{"Redo"});
    QTest::keyClick(&dialog.keySearch(), Qt::Key_F12);
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_EQ(dialog.news().text(), text(TextId::keysNothing));
}

TEST_F(KeysTest, TheDialogNamesTheOtherCommandBeforeItTakesAKey)
{
    KeysDialog dialog(*map, text, nullptr);
    dialog.show();
    dialog.choose(command("about"));
    QTest::keyClick(&dialog.newKey(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(dialog.news().text(), "Ctrl+X is a key of Cut.");
    EXPECT_FALSE(dialog.addButton().isEnabled());
    EXPECT_EQ(cut.shortcut(), QKeySequence("Ctrl+X"));
    QTest::mouseClick(&dialog.takeOverButton(), Qt::LeftButton);
    EXPECT_TRUE(cut.shortcuts().isEmpty());
    EXPECT_EQ(about.shortcut(), QKeySequence("Ctrl+X"));

    QTest::keyClick(&dialog.newKey(), Qt::Key_F12);
    QTest::keyClick(&dialog.newKey(), Qt::Key_Return); // adds it
    EXPECT_EQ(about.shortcuts(), (Keys{QKeySequence("Ctrl+X"), QKeySequence("F12")}));
    QTest::keyClick(&dialog.newKey(), Qt::Key_F11);
    QTest::mouseClick(&dialog.replaceButton(), Qt::LeftButton);
    EXPECT_EQ(about.shortcuts(), Keys{QKeySequence("F11")});
    QCoreApplication::processEvents();
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (!button->isHidden() && button->toolTip() == "Remove F11") QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(about.shortcuts().isEmpty());
}

} // namespace
} // namespace tessaro
