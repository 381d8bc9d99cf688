// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/edit/undo_scope.h"
#include "parts_fixture.h"
#include "views/theme/colours.h"
#include "views/theme/icons.h"
#include "views/theme/theme.h"
#include "views/tracks/track_frame.h"
#include "views/tracks/trk_blk_view.h"
#include "views/widgets/number_display.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(Icons, EveryFileDrawsInTheColourAskedFor)
{
    const QString folder = QStringLiteral(TESSARO_SOURCE_DIR "/data/icons");
    const Icons icons(folder);
    const QStringList files = QDir(folder).entryList({"*.svg"});
    ASSERT_GE(files.size(), 10);
    for (const QString& file : files) {
        QImage image(24, 24, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        icons.draw(painter, QString(file).chopped(4), QRectF(0, 0, 24, 24), QColor(255, 0, 0));
        painter.end();
        int solid = 0;
        for (int y = 0; y < 24; ++y)
            for (int x = 0; x < 24; ++x) {
                const QColor pixel = image.pixelColor(x, y);
                solid += pixel.alpha() == 255;
                EXPECT_EQ(pixel.green() + pixel.blue(), 0) << file.toStdString();
            }
        EXPECT_GT(solid, 8) << file.toStdString();
    }
}

TEST(NumberDisplay, NothingMovesWhileTheNumberRuns)
{
    NumberDisplay display(QStringLiteral("00:00"));
    display.setPalette(lightPalette());
    display.resize(display.sizeHint());
    const auto colonAt = [&](const QString& value) { // the colon has a colour of its own
        display.setValue(value);
        const QImage image = display.grab().toImage();
        const QRgb colon = display.palette().color(QPalette::PlaceholderText).rgb();
        for (int x = 0; x < image.width(); ++x)
            for (int y = 0; y < image.height(); ++y)
                if (image.pixel(x, y) == colon) return x;
        return -1;
    };
    const int place = colonAt(QStringLiteral("11:11"));
    EXPECT_GT(place, 0);
    for (const char* value : {"88:88", "00:07", "1:11"}) EXPECT_EQ(colonAt(QString::fromLatin1(value)), place) << value;
}

TEST(Theme, FollowsTheChoice)
{
    Theme theme;
    theme.setAppearance(Appearance::dark);
    EXPECT_TRUE(isDark(QApplication::palette()));
    theme.setAppearance(Appearance::light);
    EXPECT_FALSE(isDark(QApplication::palette()));
    theme.setAppearance(Appearance::desktop); // which is light here
    EXPECT_FALSE(isDark(QApplication::palette()));
}

/// Adds up the pixels that a widget was asked to paint.
class PaintedArea : public QObject {
public:
    int pixels = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            for (const QRect& rect : static_cast<QPaintEvent*>(event)->region()) pixels += rect.width() * rect.height();
        return false;
    }
};

/// The track window over a block of 16 bars with one long note.
struct TrackPicture : PartsFixture {
    CBlk& blk = addBlock(1, 0, 1920 * 16);
    std::unique_ptr<CTrackFrame> frame;

    TrackPicture()
    {
        addNote(blk, 0, 60, 1920 * 16);
        bind();
        frame = std::make_unique<CTrackFrame>(parts);
        frame->setPalette(lightPalette());
        frame->resize(1200, 400);
        frame->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(frame.get()));
        QApplication::processEvents();
    }
    CTrkBlkView& view() { return frame->blkView(); }
    QImage row(int track) { return view().viewport()->grab(QRect(60, 2 + track * 20, 200, 20)).toImage(); }
    /// How many pixels have this colour.
    static int count(const QImage& image, const QColor& colour)
    {
        int found = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) found += image.pixelColor(x, y) == colour;
        return found;
    }
};

TEST(TrackPainting, AStepOfThePositionPaintsTwoStrips)
{
    TrackPicture picture;
    PaintedArea area;
    picture.view().viewport()->installEventFilter(&area);
    picture.frame->setPosition(1920 * 2, false);
    QApplication::processEvents();
    EXPECT_GT(area.pixels, 0);
    EXPECT_LT(area.pixels, 2 * 20 * 400);
    picture.frame->setPosition(1920 * 200, true); // a page is turned
    EXPECT_EQ(picture.view().geometry().origin(), 1920U * 200);
}

TEST(TrackPainting, ShowsNotesColoursSelectionAndLinks)
{
    TrackPicture picture;
    const QPalette palette = lightPalette();
    const QColor notes = blend(trackColour(1, palette), palette.color(QPalette::Base), 0.8);
    const QColor accent = palette.color(QPalette::Highlight);
    EXPECT_GT(TrackPicture::count(picture.row(1), notes), 150);
    EXPECT_EQ(TrackPicture::count(picture.row(2), notes), 0);
    picture.editor.SetTrkMute(1, true);
    EXPECT_EQ(TrackPicture::count(picture.row(1), notes), 0) << "a silent track loses its colour";
    picture.editor.SetTrkMute(1, false);

    const POSITION trk = picture.editor.GetTrkPos(1);
    {
        const UndoScope step(picture.editor, "change");
        picture.editor.DeleteEvnt(trk, &picture.blk, picture.blk.GetHeadPos());
    }
    EXPECT_EQ(TrackPicture::count(picture.row(1), notes), 0);
    picture.editor.UndoNode();
    EXPECT_GT(TrackPicture::count(picture.row(1), notes), 150);

    {
        const UndoScope step(picture.editor, "link");
        picture.editor.BlkGhost(trk, &picture.blk, picture.editor.GetTrkPos(2), 0);
    }
    EXPECT_EQ(TrackPicture::count(picture.row(2), accent), 0);
    picture.frame->selection().setBlks({{BlkRef{trk, &picture.blk}}});
    EXPECT_GT(TrackPicture::count(picture.row(1), accent), 50);
    EXPECT_GT(TrackPicture::count(picture.row(2), accent), 10) << "a sibling of what is selected";
}

TEST(TrackPainting, ManyEventsChangedCostOnePainting)
{
    TrackPicture picture;
    for (std::uint32_t i = 0; i < 2000; ++i) TrackPicture::addNote(picture.blk, i, 60, 5);
    QApplication::processEvents();
    PaintedArea area;
    picture.view().viewport()->installEventFilter(&area);
    const POSITION trk = picture.editor.GetTrkPos(1);
    {
        const UndoScope step(picture.editor, "move");
        for (POSITION evnt = picture.blk.GetHeadPos(); evnt; evnt = evnt->next) {
            _EDT_EVNT rec;
            picture.blk.GetEvnt(evnt, rec);
            rec.post1 = 70;
            rec.time += picture.blk.GetTimeTop();
            picture.editor.SetEvnt(trk, &picture.blk, evnt, rec);
        }
    }
    QApplication::processEvents();
    EXPECT_LE(area.pixels, picture.view().viewport()->width() * picture.view().viewport()->height());
    EXPECT_GT(area.pixels, 0);
}

} // namespace
} // namespace tessaro
