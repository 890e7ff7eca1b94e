// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/mask/CoveredPicture.h"
#include "widgets/support/PaintCount.h"

#include <norvel/widgets/mask/LabPaintMaskView.h>

#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QMetaMethod>
#include <QPainter>
#include <QSignalSpy>

namespace {

using Type = LabPaintMaskView::LabPathChangeType;

/// A view over a picture of 400 x 300 in the editor's window, with room to paint in a rectangle of
/// 300 x 200 at (50, 40), and shown within one of 200 x 150 at (70, 60).
class PaintMaskViewTest : public CoveredPicture<LabPaintMaskView>
{
protected:
    void SetUp() override
    {
        CoveredPicture::SetUp();
        if (HasFatalFailure())
            return;
        mask = covering;
        mask->paintMode = true;
        mask->setupPaintShowRect(shownRect, paintRect);
    }

    /// The painting in px of the painting rectangle; the strokes are flattened by that.
    QImage flattened(bool clearLast = false) const
    {
        return mask->lastPaintBlurMaskImage(0.0F, clearLast).toImage();
    }

    void pressed(const QPoint& point, Qt::MouseButton button = Qt::LeftButton)
    {
        send(*mask, QEvent::MouseButtonPress, point, button, button);
    }
    void moved(const QPoint& point, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        send(*mask, QEvent::MouseMove, point, Qt::NoButton, buttons);
    }
    void released(const QPoint& point, Qt::MouseButton button = Qt::LeftButton)
    {
        send(*mask, QEvent::MouseButtonRelease, point, button, Qt::NoButton);
    }

    const QRect shownRect{70, 60, 200, 150};
    const QRect paintRect{50, 40, 300, 200};
    LabPaintMaskView* mask = nullptr; ///< belongs to the picture
};

/// A painting made by hand in px of the view: a path in a colour, over a pixmap.
QImage painted(const QSize& size, const QPainterPath& path, const QPen& pen,
               const QPainterPath& clip = {}, const QImage& below = {}, const QRect& target = {})
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    if (!clip.isEmpty())
        painter.setClipPath(clip);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!below.isNull())
        painter.drawImage(target, below);
    painter.setPen(pen);
    if (path.elementCount() == 1)
        painter.drawPoint(path.currentPosition());
    else
        painter.drawPath(path);
    return image;
}

QPen brush(int width, const QColor& color = Qt::red)
{
    return QPen(QBrush(color), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

QPainterPath rectangle(const QRect& rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

QPainterPath polyline(std::initializer_list<QPointF> points)
{
    QPainterPath path(*points.begin());
    for (const QPointF& point : points)
        path.lineTo(point);
    return path;
}

bool isEmpty(const QImage& image)
{
    QImage nothing(image.size(), QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::transparent);
    return image.convertToFormat(nothing.format()) == nothing;
}

QImage premultiplied(const QImage& image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

TEST_F(PaintMaskViewTest, HasOneSignalAndNoSlots)
{
    const QMetaObject& meta = LabPaintMaskView::staticMetaObject;
    EXPECT_STREQ(meta.className(), "LabPaintMaskView");
    ASSERT_EQ(meta.methodCount(), QWidget::staticMetaObject.methodCount() + 1);
    const QMetaMethod signal = meta.method(meta.methodOffset());
    EXPECT_EQ(signal.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(signal.methodSignature(),
              "maskMouseEvent(LabPaintMaskView::LabPathChangeType,QPoint)");
}

TEST_F(PaintMaskViewTest, ValuesOfItsEnumerations)
{
    EXPECT_EQ(LabPaintMaskView::LabPaintTypePaint, 0);
    EXPECT_EQ(LabPaintMaskView::LabPaintTypeEraser, 1);
    EXPECT_EQ(LabPaintMaskView::LabPathBegin, 0);
    EXPECT_EQ(LabPaintMaskView::LabPathMove, 1);
    EXPECT_EQ(LabPaintMaskView::LabPathEnd, 2);
}

TEST_F(PaintMaskViewTest, IsTransparentAndShowsNothingAtFirst)
{
    const LabPaintMaskView fresh(&picture());
    EXPECT_FALSE(fresh.paintMode);
    EXPECT_TRUE(fresh.testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(fresh.styleSheet(), "background-color:transparent;");
    EXPECT_TRUE(fresh.showFaceRect().isNull());
    EXPECT_TRUE(fresh.showExternalFaceRect().isNull());
    EXPECT_TRUE(isEmpty(shown()));
}

TEST_F(PaintMaskViewTest, TakesTheSizeOfItsParentWhenItPaints)
{
    EXPECT_EQ(mask->size(), QSize(400, 300));
    picture().resize(333, 222);
    EXPECT_EQ(mask->size(), QSize(400, 300));
    mask->grab();
    EXPECT_EQ(mask->size(), QSize(333, 222));
    EXPECT_EQ(mask->minimumSize(), QSize(333, 222));
    EXPECT_EQ(mask->maximumSize(), QSize(333, 222));
}

TEST_F(PaintMaskViewTest, GivesTheRectanglesBack)
{
    EXPECT_EQ(mask->showFaceRect(), shownRect);
    EXPECT_EQ(mask->showExternalFaceRect(), paintRect);
}

TEST_F(PaintMaskViewTest, ReportsPressMoveAndReleaseOfTheLeftButton)
{
    QSignalSpy events(mask, &LabPaintMaskView::maskMouseEvent);
    press({100, 100});
    ASSERT_EQ(events.count(), 1);
    EXPECT_EQ(events[0][0].value<Type>(), LabPaintMaskView::LabPathBegin);
    EXPECT_EQ(events[0][1].toPoint(), QPoint(100, 100));
    move({120, 110});
    ASSERT_EQ(events.count(), 2);
    EXPECT_EQ(events[1][0].value<Type>(), LabPaintMaskView::LabPathMove);
    EXPECT_EQ(events[1][1].toPoint(), QPoint(120, 110));
    release({120, 110});
    ASSERT_EQ(events.count(), 3);
    EXPECT_EQ(events[2][0].value<Type>(), LabPaintMaskView::LabPathEnd);
    EXPECT_EQ(events[2][1].toPoint(), QPoint(120, 110));
}

TEST_F(PaintMaskViewTest, ItsSignalCanBeQueued)
{
    std::vector<std::pair<Type, QPoint>> received;
    QObject::connect(
        mask, &LabPaintMaskView::maskMouseEvent, window.get(),
        [&](Type type, const QPoint& point) { received.emplace_back(type, point); },
        Qt::QueuedConnection);
    pressed({100, 100});
    EXPECT_TRUE(received.empty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return received.size() == 1; }));
    EXPECT_EQ(received[0], std::pair(LabPaintMaskView::LabPathBegin, QPoint(100, 100)));
}

TEST_F(PaintMaskViewTest, OtherButtonsAreNoStrokes)
{
    QSignalSpy events(mask, &LabPaintMaskView::maskMouseEvent);
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        pressed({100, 100}, button);
        moved({120, 110}, button);
        released({120, 110}, button);
    }
    moved({130, 110}, Qt::NoButton);
    EXPECT_EQ(events.count(), 0);
    EXPECT_TRUE(isEmpty(shown()));
}

TEST_F(PaintMaskViewTest, AMoveCountsOnlyWithTheLeftButtonAlone)
{
    QSignalSpy events(mask, &LabPaintMaskView::maskMouseEvent);
    pressed({100, 100});
    moved({150, 100}, Qt::LeftButton | Qt::RightButton);
    EXPECT_EQ(events.count(), 1);
    released({110, 100});
    EXPECT_EQ(shown(), painted({400, 300}, polyline({{100, 100}, {110, 100}}), brush(10),
                               rectangle(shownRect)));
}

TEST_F(PaintMaskViewTest, MovesOutsideOfThePaintingRectangleAreNeitherDrawnNorReported)
{
    QSignalSpy events(mask, &LabPaintMaskView::maskMouseEvent);
    pressed({100, 100});
    for (const QPoint& outside :
         {QPoint(49, 100), QPoint(350, 100), QPoint(100, 39), QPoint(100, 240), QPoint(-5, -5)})
        moved(outside);
    EXPECT_EQ(events.count(), 1);
    EXPECT_EQ(shown(), painted({400, 300}, QPainterPath({100, 100}), brush(10)));
    // The corners that are within.
    moved({50, 40});
    moved({349, 239});
    EXPECT_EQ(events.count(), 3);
}

TEST_F(PaintMaskViewTest, WithoutAPaintingRectangleNoMoveCounts)
{
    mask->setupPaintShowRect({}, {});
    QSignalSpy events(mask, &LabPaintMaskView::maskMouseEvent);
    pressed({100, 100});
    moved({110, 100});
    released({120, 100});
    EXPECT_EQ(events.count(), 2);
}

TEST_F(PaintMaskViewTest, AClickLeavesADotOfTheCurrentWidth)
{
    for (const int width : {10, 25}) {
        mask->clearAllData();
        mask->setupPaintLineWidth(width);
        pressed({150, 120});
        released({150, 120});
        EXPECT_EQ(shown(), painted({400, 300}, QPainterPath({150, 120}), brush(width)));
        EXPECT_EQ(shown().pixelColor(150, 120), QColor(Qt::red));
        EXPECT_EQ(shown().pixelColor(150 + width / 2 - 2, 120), QColor(Qt::red));
        EXPECT_EQ(shown().pixelColor(150 + width / 2 + 2, 120).alpha(), 0);
    }
}

TEST_F(PaintMaskViewTest, SegmentsAreSmoothedByThirdsOfTheirLengths)
{
    pressed({100, 100});
    moved({110, 105}); // thirds of (10, 5): 3.33 and 1.67 are 3 and 2
    moved({140, 100}); // of (30, -5): 10 and -1.67 are 10 and -2
    released({150, 100});
    QPainterPath path({100, 100});
    path.cubicTo({103, 102}, {107, 103}, {110, 105});
    path.cubicTo({120, 103}, {130, 102}, {140, 100});
    path.lineTo(150, 100);
    EXPECT_EQ(shown(), painted({400, 300}, path, brush(10), rectangle(shownRect)));
}

TEST_F(PaintMaskViewTest, NothingIsShownOutsideOfTheFaceRectangle)
{
    pressed({60, 100});
    moved({300, 100});
    released({300, 100});
    const QImage image = shown();
    EXPECT_EQ(image.pixelColor(69, 100).alpha(), 0);
    EXPECT_EQ(image.pixelColor(70, 100), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(269, 100), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(270, 100).alpha(), 0);
    // It is painted there all the same.
    EXPECT_EQ(flattened().pixelColor(60 - 50, 100 - 40), QColor(Qt::red));
}

TEST_F(PaintMaskViewTest, WithoutAFaceRectangleAllIsShown)
{
    mask->setupPaintShowRect({}, paintRect);
    pressed({60, 100});
    moved({300, 100});
    EXPECT_EQ(shown().pixelColor(62, 100), QColor(Qt::red));
    EXPECT_EQ(shown().pixelColor(298, 100), QColor(Qt::red));
}

TEST_F(PaintMaskViewTest, TheTypeTellsTheWidthAndNothingElse)
{
    mask->setupPaintLineWidth(20);
    mask->setupEraserWidth(7);
    for (const auto& [type, width] : {std::pair(0, 20), std::pair(1, 7), std::pair(5, 7)}) {
        mask->clearAllData();
        mask->setupPaintType(static_cast<LabPaintMaskView::LabPaintType>(type));
        pressed({100, 100});
        released({150, 100});
        EXPECT_EQ(shown(), painted({400, 300}, polyline({{100, 100}, {150, 100}}), brush(width)));
    }
}

TEST_F(PaintMaskViewTest, WidthsAtFirst)
{
    pressed({100, 100});
    released({150, 100});
    EXPECT_EQ(shown(), painted({400, 300}, polyline({{100, 100}, {150, 100}}), brush(10)));
    mask->setupPaintType(LabPaintMaskView::LabPaintTypeEraser);
    EXPECT_EQ(shown(), painted({400, 300}, polyline({{100, 100}, {150, 100}}), brush(5)));
}

TEST_F(PaintMaskViewTest, AlphaIsLimitedAndCutToWholeSteps)
{
    const auto alphaOf = [&](float alpha) {
        mask->setupPaintAlpha(alpha);
        return shown().pixelColor(125, 100).alpha();
    };
    mask->setupPaintStrokeColor(QColor(10, 200, 30));
    pressed({100, 100});
    released({150, 100});
    EXPECT_EQ(alphaOf(1.7F), 255);
    EXPECT_EQ(shown().pixelColor(125, 100), QColor(10, 200, 30));
    EXPECT_EQ(alphaOf(-0.2F), 0);
    EXPECT_EQ(alphaOf(0.5F), 127);   // 127.5
    EXPECT_EQ(alphaOf(0.25F), 63);   // 63.75
    EXPECT_EQ(alphaOf(0.999F), 254); // 254.745
}

TEST_F(PaintMaskViewTest, StrokesGatherAsOnePath)
{
    // One path with a half transparent pen: where the strokes cross it grows no denser.
    mask->setupPaintAlpha(0.5F);
    pressed({100, 80});
    released({160, 140});
    pressed({160, 80});
    released({100, 140});
    EXPECT_EQ(shown().pixelColor(130, 110).alpha(), 127);
    EXPECT_EQ(shown().pixelColor(110, 90).alpha(), 127);
    EXPECT_EQ(shown().pixelColor(150, 90).alpha(), 127);
}

TEST_F(PaintMaskViewTest, AMoveBackIntoThePaintedAreaFlattensTheStrokes)
{
    mask->setupPaintAlpha(0.5F);
    QSignalSpy events(mask, &LabPaintMaskView::maskMouseEvent);
    pressed({100, 80});
    moved({160, 80});
    moved({160, 140});
    moved({100, 140});
    const QImage before = shown();
    moved({120, 100}); // within what the path encloses
    ASSERT_EQ(events.count(), 5);
    EXPECT_EQ(events[4][0].value<Type>(), LabPaintMaskView::LabPathMove);
    EXPECT_EQ(events[4][1].toPoint(), QPoint(120, 100));
    // No line leads into the area, but the next segment begins there, as a dot so far. The
    // flattened painting is stretched from the painting rectangle to itself.
    const QImage dotted = shown();
    EXPECT_EQ(dotted.pixelColor(130, 80), before.pixelColor(130, 80));
    EXPECT_EQ(dotted.pixelColor(110, 120).alpha(), 0);
    EXPECT_EQ(dotted.pixelColor(120, 100).alpha(), 127);
    // The new strokes lie over the flattened ones: 127 over 127 is 190.7.
    moved({120, 60});
    released({120, 60});
    EXPECT_NEAR(shown().pixelColor(120, 80).alpha(), 191, 1);
    EXPECT_EQ(shown().pixelColor(140, 80).alpha(), 127);
}

TEST_F(PaintMaskViewTest, AMoveToTheSamePointIsNoMoveIntoTheArea)
{
    mask->setupPaintAlpha(0.5F);
    pressed({100, 80});
    moved({160, 80});
    moved({160, 140});
    ASSERT_FALSE(isEmpty(shown()));
    const QImage before = shown();
    moved({160, 140});
    moved({160, 140});
    EXPECT_EQ(shown(), before);
}

TEST_F(PaintMaskViewTest, APressDropsTheFlattenedPaintingButKeepsTheStrokes)
{
    pressed({100, 80});
    moved({160, 80});
    moved({160, 140});
    moved({100, 140});
    moved({120, 100}); // flattened: the square is in the image
    moved({125, 110}); // a new stroke in the path
    released({125, 110});
    ASSERT_EQ(shown().pixelColor(130, 80), QColor(Qt::red));
    pressed({200, 180});
    EXPECT_EQ(shown().pixelColor(130, 80).alpha(), 0);
    EXPECT_EQ(shown().pixelColor(122, 105), QColor(Qt::red));
}

TEST_F(PaintMaskViewTest, APressAloneDoesNotRepaint)
{
    PaintCount paints(*mask);
    pressed({100, 100});
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(paints.count(), 0);
    moved({110, 100});
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count() == 1; }));
    released({110, 110});
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count() == 2; }));
}

TEST_F(PaintMaskViewTest, GivesThePaintingInTheSizeOfThePaintingRectangle)
{
    pressed({100, 100});
    released({150, 130});
    const QImage image = flattened();
    EXPECT_EQ(image.size(), QSize(300, 200));
    EXPECT_EQ(premultiplied(image),
              painted({300, 200}, polyline({{50, 60}, {100, 90}}), brush(10)));
}

TEST_F(PaintMaskViewTest, WithoutAPaintingRectangleThePaintingHasTheSizeOfTheView)
{
    mask->setupPaintShowRect({}, {});
    pressed({100, 100});
    released({150, 130});
    EXPECT_EQ(premultiplied(flattened()),
              painted({400, 300}, polyline({{100, 100}, {150, 130}}), brush(10)));
}

TEST_F(PaintMaskViewTest, KeepsTheUnblurredPaintingUnlessItIsToBeCleared)
{
    pressed({100, 100});
    released({150, 130});
    const QImage before = shown();
    const QImage blurredOnce = mask->lastPaintBlurMaskImage(2.0F, false).toImage();
    EXPECT_EQ(shown(), before); // flattened now
    EXPECT_EQ(mask->lastPaintBlurMaskImage(2.0F, false).toImage(), blurredOnce);
    mask->lastPaintBlurMaskImage(2.0F, true);
    EXPECT_TRUE(isEmpty(shown()));
    EXPECT_TRUE(isEmpty(flattened()));
}

TEST_F(PaintMaskViewTest, BlursByFiveTimesTheGivenRadius)
{
    pressed({150, 120});
    moved({170, 130});
    released({170, 130});
    const QImage sharp = flattened();
    for (const float blur : {0.4F, 1.0F, 2.0F}) {
        QGraphicsScene scene;
        QGraphicsPixmapItem* item = scene.addPixmap(QPixmap::fromImage(sharp));
        auto* effect = new QGraphicsBlurEffect;
        effect->setBlurRadius(static_cast<double>(blur) * 5.0);
        item->setGraphicsEffect(effect);
        QImage expected(sharp.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::transparent);
        {
            QPainter painter(&expected);
            scene.render(&painter);
        }
        EXPECT_EQ(premultiplied(mask->lastPaintBlurMaskImage(blur, false).toImage()), expected);
    }
    // By 10 px a painting reaches some px further, and is softer within.
    const QImage soft = mask->lastPaintBlurMaskImage(2.0F, false).toImage();
    EXPECT_EQ(soft.size(), QSize(300, 200));
    EXPECT_EQ(sharp.pixelColor(110, 72).alpha(), 0);
    EXPECT_GT(soft.pixelColor(110, 72).alpha(), 0);
    EXPECT_LT(soft.pixelColor(110, 85).alpha(), 255);
    EXPECT_EQ(soft.pixelColor(250, 180).alpha(), 0);
}

TEST_F(PaintMaskViewTest, WithoutABlurThePaintingIsGivenAsItIs)
{
    pressed({100, 100});
    released({150, 130});
    const QImage sharp = premultiplied(flattened());
    EXPECT_EQ(sharp, painted({300, 200}, polyline({{50, 60}, {100, 90}}), brush(10)));
}

TEST_F(PaintMaskViewTest, OutOfPaintModeTheMaskThatWasSetIsShown)
{
    QPixmap pixmap(30, 20);
    pixmap.fill(QColor(0, 255, 0, 100));
    mask->setupPaintMaskImagePixmap(pixmap);
    mask->paintMode = false;
    pressed({100, 100});
    released({150, 130});
    // Stretched to the painting rectangle, seen in that of the face; the strokes are not shown.
    const QImage image = shown();
    EXPECT_EQ(image.pixelColor(125, 115), QColor(0, 255, 0, 100));
    EXPECT_EQ(image.pixelColor(70, 60), QColor(0, 255, 0, 100));
    EXPECT_EQ(image.pixelColor(269, 209), QColor(0, 255, 0, 100));
    EXPECT_EQ(image.pixelColor(69, 100).alpha(), 0);
    EXPECT_EQ(image.pixelColor(270, 100).alpha(), 0);
    mask->clearAllData();
    EXPECT_TRUE(isEmpty(shown()));
}

TEST_F(PaintMaskViewTest, AMaskThatWasSetIsPaintedOn)
{
    QPixmap pixmap(paintRect.size());
    pixmap.fill(QColor(0, 255, 0, 255));
    mask->setupPaintMaskImagePixmap(pixmap);
    EXPECT_EQ(shown().pixelColor(100, 100), QColor(0, 255, 0));
    EXPECT_EQ(flattened().pixelColor(100, 100), QColor(0, 255, 0));
}

TEST_F(PaintMaskViewTest, AMaskOfAnotherSizeIsFlattenedAtItsOwn)
{
    QPixmap pixmap(30, 20);
    pixmap.fill(Qt::green);
    mask->setupPaintMaskImagePixmap(pixmap);
    const QImage image = flattened();
    EXPECT_EQ(image.size(), QSize(300, 200));
    EXPECT_EQ(image.pixelColor(29, 19), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(30, 19).alpha(), 0);
    EXPECT_EQ(image.pixelColor(29, 20).alpha(), 0);
    // Without a painting rectangle it is stretched over the view.
    mask->setupPaintShowRect({}, {});
    mask->setupPaintMaskImagePixmap(pixmap);
    EXPECT_EQ(flattened().pixelColor(399, 299), QColor(Qt::green));
}

TEST_F(PaintMaskViewTest, AMaskComesBackInTheStrokesColourWithItsOwnAlpha)
{
    QImage source(4, 1, QImage::Format_ARGB32);
    source.setPixel(0, 0, qRgba(255, 255, 255, 255));
    source.setPixel(1, 0, qRgba(10, 200, 3, 128));
    source.setPixel(2, 0, qRgba(0, 0, 0, 1));
    source.setPixel(3, 0, qRgba(90, 90, 90, 0));
    mask->setupPaintStrokeColor(QColor(10, 200, 250, 7));
    mask->setupPaintAlphaMaskImage(QPixmap::fromImage(source));
    const QImage image = flattened();
    EXPECT_EQ(image.pixelColor(0, 0), QColor(10, 200, 250, 255));
    const QColor half = image.pixelColor(1, 0);
    EXPECT_EQ(half.alpha(), 128);
    EXPECT_NEAR(half.red(), 10, 2);
    EXPECT_NEAR(half.green(), 200, 2);
    EXPECT_NEAR(half.blue(), 250, 2);
    EXPECT_EQ(image.pixelColor(2, 0).alpha(), 1);
    EXPECT_EQ(image.pixelColor(3, 0).alpha(), 0);
    mask->paintMode = false;
    EXPECT_GT(shown().pixelColor(80, 100).blue(), 200);
}

TEST_F(PaintMaskViewTest, ClearingForgetsStrokesPaintingAndMask)
{
    QPixmap pixmap(30, 20);
    pixmap.fill(Qt::green);
    mask->setupPaintMaskImagePixmap(pixmap);
    pressed({100, 100});
    released({150, 130});
    mask->clearAllData();
    EXPECT_TRUE(isEmpty(shown()));
    EXPECT_TRUE(isEmpty(flattened()));
    mask->paintMode = false;
    EXPECT_TRUE(isEmpty(shown()));
}

TEST_F(PaintMaskViewTest, AStrokeWithoutItsReleaseDoesNotReachIntoTheNextOne)
{
    QSignalSpy events(mask, &LabPaintMaskView::maskMouseEvent);
    pressed({100, 80});
    moved({140, 80});
    mask->hide();
    mask->show();
    moved({140, 140}, Qt::RightButton);
    pressed({100, 140});
    released({140, 140});
    EXPECT_EQ(events.count(), 4);
    EXPECT_EQ(events[2][0].value<Type>(), LabPaintMaskView::LabPathBegin);
    QPainterPath path({100, 80});
    path.cubicTo({113, 80}, {127, 80}, {140, 80});
    path.moveTo(100, 140);
    path.lineTo(140, 140);
    EXPECT_EQ(shown(), painted({400, 300}, path, brush(10), rectangle(shownRect)));
}

TEST_F(PaintMaskViewTest, AStrokeGoesOnWhereThePointerWasWhenThePaintingWasTakenMeanwhile)
{
    pressed({100, 100});
    moved({120, 100});
    mask->lastPaintBlurMaskImage(1.0F, true);
    moved({160, 100});
    released({160, 120});
    const QImage image = shown();
    EXPECT_EQ(image.pixelColor(140, 100), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(160, 115), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(105, 100).alpha(), 0);
    EXPECT_EQ(image.pixelColor(80, 75).alpha(), 0); // no line from the corner of the view
}
