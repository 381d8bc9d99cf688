// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/frame/transport_commands.h"
#include "views/widgets/folding_row.h"
#include "views/widgets/held_action.h"
#include "views/widgets/number_field.h"

#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(FoldingRow, TheLeastImportantPartsGoFirst)
{
    const std::vector<FoldPart> parts{{100, 0}, {50, 2}, {50, 1}, {30, 3}};
    using Stays = std::vector<bool>;
    EXPECT_EQ(partsThatStay(parts, 260, 10), (Stays{true, true, true, true}));
    EXPECT_EQ(partsThatStay(parts, 259, 10), (Stays{true, true, true, false}));
    EXPECT_EQ(partsThatStay(parts, 219, 10), (Stays{true, false, true, false}));
    EXPECT_EQ(partsThatStay(parts, 159, 10), (Stays{true, false, false, false}));
    EXPECT_EQ(partsThatStay(parts, 10, 10), (Stays{true, false, false, false}));

    FoldingRow row;
    std::vector<QWidget*> groups;
    for (const FoldPart& part : parts) {
        groups.push_back(new NumberDisplay(QString(part.width / 10, '0')));
        row.addGroup(groups.back(), part.rank);
    }
    row.show();
    for (int width = row.sizeHint().width() + 100; width >= row.minimumSizeHint().width(); --width) {
        row.resize(width, 50);
        for (const QWidget* group : groups)
            if (group->isVisible()) {
                ASSERT_LE(group->geometry().right(), width) << "nothing is cut off";
            }
        ASSERT_TRUE(groups[0]->isVisible());
    }
    EXPECT_FALSE(groups[3]->isVisible());
}

class NumberFieldTest : public testing::Test {
protected:
    NumberFieldTest()
    {
        field.setValue("120");
        field.onTyped = [this](const QString& text) {
            typed << text;
            return text != "bad";
        };
        field.onTurned = [this](int steps) { turned += steps; };
        field.resize(field.sizeHint());
        field.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&field));
    }
    void turn(int degrees)
    {
        QWheelEvent event({5, 5}, field.mapToGlobal(QPointF(5, 5)), {}, {0, degrees * 8}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&field, &event);
    }

    NumberField field{QStringLiteral("000.00")};
    QStringList typed;
    int turned = 0;
};

TEST_F(NumberFieldTest, IsTypedInItsPlace)
{
    QTest::mouseClick(&field, Qt::LeftButton);
    ASSERT_TRUE(field.line());
    EXPECT_EQ(field.line()->selectedText(), "120");
    QTest::keyClicks(field.line(), "bad");
    QTest::keyClick(field.line(), Qt::Key_Return);
    ASSERT_TRUE(field.line()) << "stays for another try";
    QTest::keyClicks(field.line(), "95");
    field.setValue("121"); // the number runs meanwhile
    EXPECT_EQ(field.line()->text(), "95");
    QTest::keyClick(field.line(), Qt::Key_Return);
    EXPECT_FALSE(field.line());
    EXPECT_EQ(typed, (QStringList{"bad", "95"}));

    field.setFocus();
    QTest::keyClick(&field, Qt::Key_F2);
    QTest::keyClicks(field.line(), "7");
    QTest::keyClick(field.line(), Qt::Key_Escape);
    EXPECT_FALSE(field.line());
    EXPECT_EQ(typed.size(), 2);
}

TEST_F(NumberFieldTest, IsTurned)
{
    turn(15);
    turn(-30);
    EXPECT_EQ(turned, -1);
    for (int i = 0; i < 3; ++i) turn(5); // a fine wheel
    EXPECT_EQ(turned, 0);
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_EQ(turned, 1);
}

TEST(HeldAction, LastsFromPressToRelease)
{
    HeldAction action;
    int holds = 0;
    int releases = 0;
    action.onHold = [&](Qt::KeyboardModifiers keys) { holds += keys == Qt::ShiftModifier ? 10 : 1; };
    action.onRelease = [&] { ++releases; };
    action.release(); // nothing is held
    action.press({});
    action.press({});
    action.repeat();
    action.release();
    action.repeat();
    EXPECT_EQ(holds, 2);
    EXPECT_EQ(releases, 1);

    QWidget window;
    action.setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Left), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Left)});
    window.addAction(&action);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    holds = 0;
    QTest::keyPress(&window, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_TRUE(action.isHeld());
    QTest::keyRelease(&window, Qt::Key_Control);
    EXPECT_TRUE(action.isHeld());
    QTest::keyRelease(&window, Qt::Key_Left);
    EXPECT_FALSE(action.isHeld());
    EXPECT_EQ(holds, 1);
    QTest::keyPress(&window, Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(holds, 11);
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !action.isHeld(); })) << "the window lost the focus";
}

TEST(TypedTempo, TakesWholeBeats)
{
    EXPECT_EQ(typedTempo("120"), 120);
    EXPECT_EQ(typedTempo("92.5"), 93);
    EXPECT_EQ(typedTempo("92,4"), 92);
    for (const char* text : {"", "0", "-5", "1000", "fast", "nan", "1e9"})
        EXPECT_FALSE(typedTempo(QString::fromLatin1(text))) << text;
}

} // namespace
} // namespace tessaro
