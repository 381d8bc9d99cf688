// SPDX-License-Identifier: GPL-3.0-or-later
#include "song_fixture.h"
#include "views/theme/colours.h"
#include "views/theme/icons.h"
#include "views/theme/theme.h"
#include "views/tracks/song_overview.h"
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

TEST(SongOverview, AStepOfThePositionPaintsTwoStrips)
{
    SongFixture song;
    CBlk& blk = song.addBlock(1, 0, 1920 * 16);
    SongFixture::addNote(blk, 0, 60, 100, 1920 * 16);
    std::vector<TrackRow> rows = trackRows(song.editor);
    const auto pictures = [&] { return std::vector<Miniature>{Miniature(*song.editor.song().trk(1), 1920 * 16)}; };

    SongOverview overview;
    overview.setPalette(lightPalette());
    overview.resize(800, 400);
    overview.setSong(rows, pictures(), 1920 * 16, {});
    overview.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&overview));
    QApplication::processEvents();
    PaintedArea area;
    overview.installEventFilter(&area);
    overview.setPosition(1920 * 8);
    QApplication::processEvents();
    EXPECT_GT(area.pixels, 0);
    EXPECT_LT(area.pixels, 800 * 400 / 10);

    // The lane wears the track's colour, and loses it when the track is silent.
    const QColor colour = trackColour(1, overview.palette());
    const auto isColour = [&](const QImage& image) {
        for (int y = 28; y < 56; ++y)
            if (image.pixelColor(200, y) == colour) return true;
        return false;
    };
    EXPECT_TRUE(isColour(overview.grab().toImage()));
    rows[0].sounding = false;
    overview.setRows(rows);
    EXPECT_FALSE(isColour(overview.grab().toImage()));
}

} // namespace
} // namespace tessaro
