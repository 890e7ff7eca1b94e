// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/mask/MaskedTrack.h"
#include "widgets/mask/PaintedStroke.h"
#include "widgets/support/PaintCount.h"

#include <cmath>

namespace {

using Calls = std::vector<std::string>;
using TrackMaskWidgetTest = MaskedTrack;

const QColor blue(0, 0, 255, 255);

} // namespace

TEST_F(TrackMaskWidgetTest, HasNoSignalsAndNoSlots)
{
    EXPECT_STREQ(mask->metaObject()->className(), "RvTrackMaskWidget");
    EXPECT_EQ(mask->metaObject()->methodCount(), QWidget::staticMetaObject.methodCount());
}

TEST_F(TrackMaskWidgetTest, HasNoMaskUntilItIsClearedOrPlaced)
{
    OpenMaskWidget fresh(&application, window.get());
    EXPECT_EQ(fresh.getMaskImage(), nullptr);
    fresh.setTrack(track.get());
    EXPECT_EQ(fresh.getMaskImage(), nullptr);
    fresh.clear();
    const std::unique_ptr<QImage> image(fresh.getMaskImage());
    ASSERT_TRUE(image);
    const std::unique_ptr<const uchar[]> pixels(image->constBits());
    EXPECT_EQ(image->size(), QSize(400, 200));
}

TEST_F(TrackMaskWidgetTest, PaintsNothingWithoutAMask)
{
    OpenMaskWidget fresh(&application, window.get());
    fresh.resize(50, 50);
    fresh.setTrack(track.get());
    send(fresh, QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    send(fresh, QEvent::MouseButtonRelease, {30, 30}, Qt::LeftButton, Qt::NoButton);
    QImage nothing(50, 50, QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::transparent);
    EXPECT_EQ(shown(fresh), nothing);
    fresh.undo(); // no mask, nothing to undo
    EXPECT_EQ(fresh.getMaskImage(), nullptr);
}

TEST_F(TrackMaskWidgetTest, LiesOverItsTrack)
{
    EXPECT_EQ(mask->geometry(), QRect(200, 200, 400, 200));
    // 0.75 x 800 / 1600 = 0.375: 150 x 75 from (325, 262.5), cut to whole px.
    placeAt(0.75F);
    EXPECT_EQ(mask->geometry(), QRect(325, 262, 150, 75));
    // 340 to the left and 290 up: around (272.5, 191.25), from (197.5, 153.75).
    track->setPosition(460.0F, 740.0F);
    mask->updateGeometry();
    EXPECT_EQ(mask->geometry(), QRect(197, 153, 150, 75));
    // 450 x 225 around (192.5, 201.25), from (-32.5, 88.75): cut towards 0.
    track->setScale(3.0F);
    application.setCanvasPosition(-80.0F, -10.0F);
    mask->updateGeometry();
    EXPECT_EQ(mask->geometry(), QRect(-32, 88, 450, 225));
    EXPECT_EQ(mask->minimumSize(), mask->maximumSize());
}

TEST_F(TrackMaskWidgetTest, TurnsPointsOfTheWidgetIntoThoseOfTheMaskWithYDown)
{
    EXPECT_EQ(mask->viewPos2PixmapPos({0, 0}), QPointF(0, 0));
    EXPECT_EQ(mask->viewPos2PixmapPos({30.5, 120}), QPointF(30.5, 120));
    // At scale 0.75 the widget stands at (325, 262), the track at (325, 262.5), and a view px is
    // 1 / 0.375 = 2.66667 track px: 10 x 2.66667, (20 - 0.5) x 2.66667.
    placeAt(0.75F);
    EXPECT_NEAR(mask->viewPos2PixmapPos({10, 20}).x(), 26.66667, 1e-4);
    EXPECT_NEAR(mask->viewPos2PixmapPos({10, 20}).y(), 52, 1e-4);
}

TEST_F(TrackMaskWidgetTest, AStrokeOfThePenIsPaintedIntoTheMask)
{
    strokePaintedOnce({50, 60}, {150, 100});
    const QImage expected = painted(line({50, 60}, {150, 100}), 20);
    EXPECT_EQ(maskImage(), blackAndWhite(expected));
    EXPECT_EQ(maskImage().pixelColor(100, 80), QColor(Qt::white));
    EXPECT_EQ(maskImage().pixelColor(100, 120), QColor(Qt::black));
    // At one view px for each of the mask it is shown as it is: blue with an alpha of 0.38 x 255.
    EXPECT_NEAR(shown(*mask).pixelColor(100, 80).alpha(), 97, 1);
    EXPECT_EQ(shown(*mask).pixelColor(100, 80).blue(), 255);
}

TEST_F(TrackMaskWidgetTest, AStrokeGoesThroughEveryPointOfTheDrag)
{
    press({250, 260});
    move({300, 350});
    move({400, 250});
    release({450, 250});
    paint();
    const QImage image = maskImage();
    for (const QPoint& point : {QPoint(50, 60), QPoint(75, 105), QPoint(100, 150), QPoint(150, 100),
                                QPoint(200, 50), QPoint(225, 50), QPoint(250, 50)})
        EXPECT_EQ(image.pixelColor(point), QColor(Qt::white)) << point.x() << ", " << point.y();
    for (const QPoint& point : {QPoint(50, 40), QPoint(100, 100), QPoint(150, 50), QPoint(270, 50)})
        EXPECT_EQ(image.pixelColor(point), QColor(Qt::black)) << point.x() << ", " << point.y();
}

TEST_F(TrackMaskWidgetTest, TheWholeStrokeIsPaintedAgainAtEveryPaint)
{
    // From 89.5 to 110.5: the rows 89 and 110 are half covered.
    mask->setPenColorAndOpacity(Qt::white, 1.0);
    mask->setPenWidth(21);
    const auto border = [&] {
        paint();
        return shown(*mask).pixelColor(100, 89).alpha();
    };
    send(*mask, QEvent::MouseButtonPress, {50, 100}, Qt::LeftButton, Qt::LeftButton);
    send(*mask, QEvent::MouseMove, {150, 100}, Qt::NoButton, Qt::LeftButton);
    EXPECT_NEAR(border(), 128, 2); // 0.5
    EXPECT_NEAR(border(), 128, 2); // nothing was due
    send(*mask, QEvent::MouseMove, {200, 100}, Qt::NoButton, Qt::LeftButton);
    EXPECT_NEAR(border(), 191, 2); // 0.5 + 0.5 x 0.5
    send(*mask, QEvent::MouseButtonRelease, {210, 100}, Qt::LeftButton, Qt::NoButton);
    EXPECT_NEAR(border(), 223, 2); // 0.75 + 0.25 x 0.5
    EXPECT_NEAR(border(), 223, 2);
}

TEST_F(TrackMaskWidgetTest, ThePenReplacesWhatIsThereAndDoesNotGrowDenser)
{
    for (int i = 0; i < 3; ++i)
        stroke({50, 100}, {150, 100});
    EXPECT_NEAR(shown(*mask).pixelColor(100, 100).alpha(), 97, 1);
    mask->setPenColorAndOpacity(Qt::red, 0.2);
    stroke({100, 50}, {100, 150});
    EXPECT_NEAR(shown(*mask).pixelColor(100, 100).alpha(), 51, 1);
    EXPECT_EQ(shown(*mask).pixelColor(100, 100).blue(), 0);
}

TEST_F(TrackMaskWidgetTest, AClickAloneIsAStrokeThatPaintsNothing)
{
    stroke({50, 100}, {150, 100});
    const QImage before = maskImage();
    stroke({300, 100}, {300, 100});
    EXPECT_EQ(maskImage(), before);
    mask->undo(); // takes the click back
    EXPECT_EQ(maskImage(), before);
    mask->undo();
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(TrackMaskWidgetTest, StrokesAreWidenedWithAMaskThatIsShownSmaller)
{
    // The mask is wider than the widget of 150 x 75: min(200 / 75, 400 / 150) = 2.66667 mask px for
    // each of the widget; 20 x 2.66667 is cut to 53.
    placeAt(0.75F);
    strokePaintedOnce({20, 40}, {120, 40});
    // (20 x 2.66667, (40 - 0.5) x 2.66667) and (120 x 2.66667, ...)
    const QPointF from(20 / 0.375, 39.5 / 0.375);
    const QPointF to(120 / 0.375, 39.5 / 0.375);
    EXPECT_EQ(maskImage(), blackAndWhite(painted(line(from, to), 53)));
    EXPECT_EQ(maskImage().pixelColor(150, 105 - 25), QColor(Qt::white));
    EXPECT_EQ(maskImage().pixelColor(150, 105 - 28), QColor(Qt::black));
}

TEST_F(TrackMaskWidgetTest, StrokesAreWidenedAsWellWithAMaskThatIsShownLarger)
{
    // 800 x 400 at scale 4: the ratio is now that of the widget to the mask, min(400 / 200,
    // 800 / 400) = 2 and not its inverse: 40 mask px, 80 on the screen.
    placeAt(4.0F);
    ASSERT_EQ(mask->size(), QSize(800, 400));
    strokePaintedOnce({200, 200}, {500, 200});
    EXPECT_EQ(maskImage(), blackAndWhite(painted(line({100, 100}, {250, 100}), 40)));
}

TEST_F(TrackMaskWidgetTest, TheSmallerRatioOfTheTwoSidesCounts)
{
    const auto expectWidth = [&](float scale, const QSize& shownSize, int width) {
        placeAt(scale);
        ASSERT_EQ(mask->size(), shownSize);
        mask->clear();
        const QPoint middle = mask->rect().center();
        const QPointF from = mask->viewPos2PixmapPos(middle);
        const QPointF to = mask->viewPos2PixmapPos(middle + QPoint(9, 0));
        strokePaintedOnce(middle, middle + QPoint(9, 0));
        const auto expected = [&](int penWidth) {
            return blackAndWhite(painted(line(from, to), penWidth, blue, usualOpacity,
                                         QPainter::CompositionMode_Source, {}, {333, 101}));
        };
        EXPECT_EQ(maskImage(), expected(width));
        EXPECT_NE(maskImage(), expected(width + 1));
        EXPECT_NE(maskImage(), expected(width - 1));
    };
    track->setWidthAndHeight(333.0F, 101.0F);
    mask->setPenWidth(30);
    // 124.875 x 37.875: min(101 / 37 = 2.72973, 333 / 124 = 2.68548) x 30 = 80.56
    expectWidth(0.75F, {124, 37}, 80);
    // 416.25 x 126.25: min(126 / 101 = 1.24752, 416 / 333 = 1.24925) x 30 = 37.43
    expectWidth(2.5F, {416, 126}, 37);
    mask->setPenWidth(40);
    // Exactly as wide: the height does not matter.
    expectWidth(2.0F, {333, 101}, 40);
}

TEST_F(TrackMaskWidgetTest, PenAndEraserHaveWidthsOfTheirOwn)
{
    mask->setPenWidth(31);
    mask->setEraserWidth(9);
    strokePaintedOnce({100, 100}, {300, 100});
    const QImage drawn = painted(line({100, 100}, {300, 100}), 31);
    EXPECT_EQ(maskImage(), blackAndWhite(drawn));
    mask->setDrawTool(DrawToolEraser);
    strokePaintedOnce({200, 50}, {200, 150});
    const QImage erased = painted(line({200, 50}, {200, 150}), 9, blue, usualOpacity,
                                  QPainter::CompositionMode_Clear, drawn);
    EXPECT_EQ(maskImage(), blackAndWhite(erased));
    // Whatever the opacity, nothing is left.
    EXPECT_EQ(shown(*mask).pixelColor(200, 100).alpha(), 0);
    EXPECT_EQ(shown(*mask).pixelColor(150, 100).alpha(), 97);
}

TEST_F(TrackMaskWidgetTest, AnOpaqueEraserTakesAllAwayToo)
{
    mask->setPenColorAndOpacity(blue, 1.0);
    stroke({100, 100}, {300, 100});
    mask->setDrawTool(DrawToolEraser);
    stroke({200, 50}, {200, 150});
    EXPECT_EQ(maskImage().pixelColor(200, 100), QColor(Qt::black));
    EXPECT_EQ(maskImage().pixelColor(150, 100), QColor(Qt::white));
    EXPECT_EQ(shown(*mask).pixelColor(200, 100).alpha(), 0);
}

TEST_F(TrackMaskWidgetTest, AnotherToolPaintsWithAPlainPenOverWhatIsThere)
{
    mask->setDrawTool(static_cast<RvTrackMaskWidgetDrawTool>(7));
    strokePaintedOnce({100, 100}, {300, 100});
    EXPECT_EQ(maskImage(),
              blackAndWhite(painted(line({100, 100}, {300, 100}), 1, blue, usualOpacity,
                                    QPainter::CompositionMode_SourceOver)));
}

TEST_F(TrackMaskWidgetTest, PureBlackDoesNotCountAndAnyOtherVisibleColourDoes)
{
    mask->setPenColorAndOpacity(Qt::black, 1.0);
    stroke({100, 100}, {300, 100});
    EXPECT_EQ(maskedPixels(), 0);
    EXPECT_EQ(shown(*mask).pixelColor(200, 100), QColor(Qt::black));
    for (const QColor& color : {QColor(Qt::white), QColor(Qt::red), QColor(10, 10, 10)}) {
        mask->clear();
        mask->setPenColorAndOpacity(color, 1.0);
        stroke({100, 100}, {300, 100});
        EXPECT_EQ(maskImage().pixelColor(200, 100), QColor(Qt::white));
    }
}

TEST_F(TrackMaskWidgetTest, WhetherADarkColourCountsIsToldByItsGreyValue)
{
    const QSize size(14, 8);
    track->setWidthAndHeight(14.0F, 8.0F);
    mask->updateGeometry();
    mask->setPenWidth(2);
    int counted = 0;
    int dark = 0;
    for (const double opacity : {1.0, 0.5, 0.1, 0.03, 0.004}) {
        for (int i = 0; i < 8 * 4 * 12; ++i) {
            const QColor color(i % 8, i / 8 % 4, i / 32);
            mask->clear();
            mask->setPenColorAndOpacity(color, opacity);
            strokePaintedOnce({2, 3}, {9, 4});
            const QImage expected = painted(line({2, 3}, {9, 4}), 2, color, opacity,
                                            QPainter::CompositionMode_Source, {}, size);
            ASSERT_EQ(maskImage(), blackAndWhite(expected))
                << color.name().toStdString() << " at " << opacity;
            (maskedPixels() > 0 ? counted : dark) += 1;
        }
    }
    EXPECT_GT(counted, 100);
    EXPECT_GT(dark, 100);
}

TEST_F(TrackMaskWidgetTest, TheMaskImageIsAPlainGreyOneWithPixelsOfItsOwn)
{
    stroke({100, 100}, {300, 100});
    const std::unique_ptr<QImage> first(mask->getMaskImage());
    const std::unique_ptr<QImage> second(mask->getMaskImage());
    ASSERT_TRUE(first && second);
    const std::unique_ptr<const uchar[]> firstPixels(first->constBits());
    const std::unique_ptr<const uchar[]> secondPixels(second->constBits());
    EXPECT_NE(firstPixels, secondPixels);
    EXPECT_EQ(*first, *second);
    EXPECT_EQ(first->format(), QImage::Format_Grayscale8);
    EXPECT_EQ(first->size(), QSize(400, 200));
    EXPECT_EQ(first->bytesPerLine(), 400);
    mask->clear();
    EXPECT_EQ(*first, *second);
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(TrackMaskWidgetTest, TheLinesOfTheMaskImageArePaddedAsThoseOfAnyImage)
{
    track->setWidthAndHeight(37.0F, 11.0F);
    mask->updateGeometry();
    const std::unique_ptr<QImage> image(mask->getMaskImage());
    ASSERT_TRUE(image);
    const std::unique_ptr<const uchar[]> pixels(image->constBits());
    EXPECT_EQ(image->size(), QSize(37, 11));
    EXPECT_EQ(image->bytesPerLine(), 40);
}

TEST_F(TrackMaskWidgetTest, GesturesAreOffDuringAStrokeOfAnyButton)
{
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        calls("enableGesture");
        press({300, 300}, button);
        EXPECT_EQ(calls("enableGesture"), Calls{"false"});
        move({310, 310});
        EXPECT_EQ(calls("enableGesture"), Calls{});
        release({310, 310}, button);
        EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    }
}

TEST_F(TrackMaskWidgetTest, OtherButtonsDoNotPaint)
{
    drag({300, 300}, {350, 300}, Qt::RightButton);
    drag({300, 300}, {350, 300}, Qt::MiddleButton);
    paint();
    EXPECT_EQ(maskedPixels(), 0);
    mask->undo();
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(TrackMaskWidgetTest, AMoveCountsWhileTheLeftButtonIsAmongThoseHeld)
{
    send(*mask, QEvent::MouseButtonPress, {50, 50}, Qt::LeftButton, Qt::LeftButton);
    send(*mask, QEvent::MouseMove, {100, 50}, Qt::NoButton, Qt::LeftButton | Qt::RightButton);
    send(*mask, QEvent::MouseMove, {100, 150}, Qt::NoButton, Qt::RightButton);
    send(*mask, QEvent::MouseMove, {300, 150}, Qt::NoButton, Qt::NoButton);
    paint();
    EXPECT_EQ(maskImage(), blackAndWhite(painted(line({50, 50}, {100, 50}), 20)));
}

TEST_F(TrackMaskWidgetTest, UndoAndRedoGoStrokeByStroke)
{
    const QImage empty = maskImage();
    stroke({50, 50}, {100, 50});
    const QImage one = maskImage();
    stroke({50, 100}, {100, 100});
    const QImage two = maskImage();
    stroke({50, 150}, {100, 150});
    const QImage three = maskImage();
    ASSERT_NE(two, three);

    for (const QImage& expected : {two, one, empty, empty}) {
        mask->undo();
        EXPECT_EQ(maskImage(), expected);
    }
    for (const QImage& expected : {one, two, three, three}) {
        mask->redo();
        EXPECT_EQ(maskImage(), expected);
    }
    mask->undo();
    mask->undo();
    mask->redo();
    EXPECT_EQ(maskImage(), two);
}

TEST_F(TrackMaskWidgetTest, ANewStrokeEmptiesWhatCouldBeRedone)
{
    stroke({50, 50}, {100, 50});
    mask->undo();
    stroke({50, 150}, {100, 150});
    const QImage second = maskImage();
    mask->redo();
    EXPECT_EQ(maskImage(), second);
    mask->undo();
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(TrackMaskWidgetTest, UndoneStrokesAreNotLimited)
{
    for (int i = 0; i < 60; ++i)
        stroke({10 + 5 * i, 20}, {10 + 5 * i, 180});
    const QImage all = maskImage();
    for (int i = 0; i < 60; ++i)
        mask->undo();
    EXPECT_EQ(maskedPixels(), 0);
    for (int i = 0; i < 60; ++i)
        mask->redo();
    EXPECT_EQ(maskImage(), all);
}

TEST_F(TrackMaskWidgetTest, EveryChangeOfTheMaskRepaints)
{
    track->setPosition(800.25F, 450.25F);
    mask->updateGeometry();
    PaintCount paints(*mask);
    EXPECT_TRUE(paints.isRaisedBy([this] {
        send(*mask, QEvent::MouseButtonPress, {50, 50}, Qt::LeftButton, Qt::LeftButton);
    }));
    EXPECT_TRUE(paints.isRaisedBy([this] {
        send(*mask, QEvent::MouseMove, {90, 50}, Qt::NoButton, Qt::LeftButton);
    }));
    EXPECT_TRUE(paints.isRaisedBy([this] {
        send(*mask, QEvent::MouseButtonRelease, {90, 50}, Qt::LeftButton, Qt::NoButton);
    }));
    EXPECT_TRUE(paints.isRaisedBy([this] { mask->undo(); }));
    EXPECT_TRUE(paints.isRaisedBy([this] { mask->redo(); }));
    EXPECT_TRUE(paints.isRaisedBy([this] { mask->clear(); }));
    // The place stays and the mask is another one.
    const QRect place = mask->geometry();
    track->setWidthAndHeight(400.25F, 200.25F);
    EXPECT_TRUE(paints.isRaisedBy([this] { mask->updateGeometry(); }));
    EXPECT_EQ(mask->geometry(), place);
}

TEST_F(TrackMaskWidgetTest, UndoAndRedoShowAtOnce)
{
    stroke({50, 50}, {300, 150});
    const auto seen = [&] { return grabbedWindow().pixelColor(375, 300).blue() > 40; };
    EXPECT_TRUE(seen());
    mask->undo();
    EXPECT_FALSE(seen());
    mask->redo();
    EXPECT_TRUE(seen());
}

TEST_F(TrackMaskWidgetTest, ClearingForgetsMaskAndStrokes)
{
    stroke({50, 50}, {100, 50});
    stroke({50, 90}, {100, 90});
    mask->undo();
    mask->clear();
    EXPECT_EQ(maskedPixels(), 0);
    mask->undo();
    EXPECT_EQ(maskedPixels(), 0);
    mask->redo();
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(TrackMaskWidgetTest, ClearingTakesTheTracksSizeInWholePixels)
{
    track->setWidthAndHeight(120.9F, 60.9F);
    mask->clear();
    EXPECT_EQ(maskImage().size(), QSize(120, 60));
    EXPECT_EQ(mask->size(), QSize(400, 200)); // the place is that of the last updateGeometry
}

TEST_F(TrackMaskWidgetTest, AnotherZoomOrPlaceKeepsThePainting)
{
    stroke({50, 50}, {100, 50});
    const QImage before = maskImage();
    placeAt(1.0F);
    EXPECT_EQ(maskImage(), before);
    track->setScale(2.0F);
    track->setRotation(10.0F);
    track->setPosition(300.0F, 300.0F);
    mask->updateGeometry();
    EXPECT_EQ(maskImage(), before);
    mask->undo();
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(TrackMaskWidgetTest, AnotherTrackSizeClearsThePaintingButKeepsTheStrokes)
{
    stroke({50, 50}, {100, 50});
    const QImage one = maskImage();
    stroke({50, 90}, {100, 90});
    track->setWidthAndHeight(401.0F, 200.0F);
    mask->updateGeometry();
    EXPECT_EQ(maskImage().size(), QSize(401, 200));
    EXPECT_EQ(maskedPixels(), 0);
    mask->undo(); // a mask of the old size comes back
    EXPECT_EQ(maskImage(), one);
    EXPECT_EQ(maskImage().size(), QSize(400, 200));
    mask->redo();
    EXPECT_EQ(maskImage().size(), QSize(401, 200));
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(TrackMaskWidgetTest, TheSmallestChangeOfTheTracksSizeCounts)
{
    stroke({50, 50}, {100, 50});
    track->setWidthAndHeight(400.0F, std::nextafter(200.0F, 201.0F));
    mask->updateGeometry();
    EXPECT_EQ(maskImage().size(), QSize(400, 200));
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(TrackMaskWidgetTest, TheMaskIsStretchedOverTheWidget)
{
    mask->setPenColorAndOpacity(Qt::red, 1.0);
    stroke({40, 40}, {160, 40});
    for (const float scale : {1.0F, 4.0F}) {
        placeAt(scale);
        const double zoom = static_cast<double>(scale) / 2.0;
        const QImage image = shown(*mask);
        const auto at = [&](double x, double y) {
            return image.pixelColor(static_cast<int>(x * zoom), static_cast<int>(y * zoom));
        };
        EXPECT_EQ(at(100, 40), QColor(Qt::red));
        EXPECT_EQ(at(100, 60).alpha(), 0);
        EXPECT_EQ(at(190, 40).alpha(), 0);
    }
}

TEST_F(TrackMaskWidgetTest, TheCursorIsADiscWithACrossOfThePensWidth)
{
    const QCursor cursor = mask->cursor();
    const QImage image = cursor.pixmap().toImage().convertToFormat(QImage::Format_ARGB32);
    EXPECT_EQ(image.size(), QSize(20, 20));
    EXPECT_EQ(cursor.hotSpot(), QPoint(10, 10));
    // The disc goes from (1, 1) over 17 px, to (18, 18) with its line: 128 of white within, nothing
    // in the corners and outside.
    EXPECT_EQ(image.pixelColor(5, 7), QColor(255, 255, 255, 128));
    for (const QPoint& corner : {QPoint(0, 0), QPoint(19, 0), QPoint(0, 19), QPoint(19, 19),
                                 QPoint(2, 2), QPoint(19, 9), QPoint(9, 19), QPoint(17, 17)})
        EXPECT_EQ(image.pixelColor(corner).alpha(), 0) << corner.x() << ", " << corner.y();
    for (const QPoint& border : {QPoint(9, 1), QPoint(1, 9), QPoint(9, 17), QPoint(17, 9)})
        EXPECT_GT(image.pixelColor(border).alpha(), 40) << border.x() << ", " << border.y();
    // The arms are 20 / 16 = 1 px long on each side of (10, 10).
    for (const QPoint& arm : {QPoint(10, 10), QPoint(9, 9), QPoint(10, 9), QPoint(9, 10)}) {
        const QColor color = image.pixelColor(arm);
        EXPECT_GT(color.blue(), color.red() + 20) << arm.x() << ", " << arm.y();
    }
    for (const QPoint& beyond : {QPoint(7, 10), QPoint(13, 10), QPoint(10, 7), QPoint(10, 13)})
        EXPECT_EQ(image.pixelColor(beyond), QColor(255, 255, 255, 128));
}

TEST_F(TrackMaskWidgetTest, TheCursorIsDrawnInTheseStepsForEveryWidth)
{
    for (const int width : {1, 2, 3, 4, 15, 16, 33, 64, 101}) {
        mask->setPenWidth(width);
        QPixmap expected(width, width);
        expected.fill(Qt::transparent);
        {
            QPainter painter(&expected);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(
                QPen(QColor(255, 255, 255, 150), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
            painter.setBrush(QColor(255, 255, 255, 128));
            painter.drawEllipse(QRect(1, 1, width - 3, width - 3));
            painter.setPen(QPen(blue, 1.0));
            painter.setOpacity(usualOpacity);
            const int c = width / 2;
            const int k = width / 16;
            painter.drawLine(c - k, c, c + k, c);
            painter.drawLine(c, c - k, c, c + k);
        }
        EXPECT_EQ(mask->cursor().pixmap().toImage(), expected.toImage()) << width;
        EXPECT_EQ(mask->cursor().hotSpot(), QPoint(width / 2, width / 2));
    }
}

TEST_F(TrackMaskWidgetTest, TheCursorHasThePensWidthForTheEraserToo)
{
    mask->setPenWidth(30);
    EXPECT_EQ(mask->cursor().pixmap().size(), QSize(30, 30));
    mask->setDrawTool(DrawToolEraser);
    mask->setEraserWidth(50);
    EXPECT_EQ(mask->cursor().pixmap().size(), QSize(30, 30));
}

TEST_F(TrackMaskWidgetTest, AnotherColourShowsInTheCursorAtTheNextWidth)
{
    mask->setPenWidth(64);
    const auto crossColor = [&] { return mask->cursor().pixmap().toImage().pixelColor(30, 32); };
    const QColor before = crossColor();
    mask->setPenColorAndOpacity(Qt::red, 1.0);
    EXPECT_EQ(crossColor(), before);
    mask->setDrawTool(DrawToolEraser);
    EXPECT_EQ(crossColor(), before);
    // The eraser's width rebuilds the cursor as well.
    mask->setEraserWidth(5);
    EXPECT_NE(crossColor(), before);
    EXPECT_GT(crossColor().red(), crossColor().blue());
    EXPECT_EQ(mask->createCircleCursor().pixmap().toImage(), mask->cursor().pixmap().toImage());
}

TEST_F(TrackMaskWidgetTest, AnotherTrackIsMaskedFromTheNextPlacing)
{
    stroke({50, 50}, {100, 50});
    const auto other = adopt(qrvkp::RvSpriteTrack::create(track->getTrackSource(), 0, 1000));
    other->setWidthAndHeight(100.0F, 80.0F);
    other->setPosition(800.0F, 450.0F);
    mask->setTrack(other.get());
    EXPECT_EQ(mask->size(), QSize(400, 200));
    EXPECT_EQ(maskImage().size(), QSize(400, 200));
    mask->updateGeometry();
    EXPECT_EQ(mask->geometry(), QRect(350, 260, 100, 80));
    EXPECT_EQ(maskImage().size(), QSize(100, 80));
    mask->setTrack(nullptr);
}
