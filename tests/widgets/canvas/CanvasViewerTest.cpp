// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/support/ShownEditor.h"

#include <norvel/widgets/canvas/CanvasViewer.h>

#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>

using norvel::CanvasViewer;

namespace {

using Calls = std::vector<std::string>;

/// The map over a view of 800 x 600 with a canvas of 1920 x 1080: the map is 96 x 54, and at scale
/// s it has s x 800 / 96 view px for each of its own.
class CanvasViewerTest : public ShownEditor
{
protected:
    void SetUp() override
    {
        ShownEditor::SetUp();
        if (HasFatalFailure())
            return;
        viewer = std::make_unique<CanvasViewer>(&application);
    }

    QGraphicsRectItem* viewerItem()
    {
        for (QGraphicsItem* item : view().scene()->items()) {
            if (item->type() == QGraphicsItem::UserType + 1)
                return dynamic_cast<QGraphicsRectItem*>(item);
        }
        return nullptr;
    }
    QGraphicsRectItem* mapItem()
    {
        QGraphicsRectItem* item = viewerItem();
        return item ? dynamic_cast<QGraphicsRectItem*>(item->parentItem()) : nullptr;
    }

    void expectRects(const QRectF& map, const QRectF& seen)
    {
        ASSERT_TRUE(mapItem());
        EXPECT_EQ(mapItem()->rect(), map);
        const QRectF rect = viewerItem()->rect();
        EXPECT_NEAR(rect.x(), seen.x(), 1e-4);
        EXPECT_NEAR(rect.y(), seen.y(), 1e-4);
        EXPECT_NEAR(rect.width(), seen.width(), 1e-4);
        EXPECT_NEAR(rect.height(), seen.height(), 1e-4);
    }

    void expectPosition(double x, double y) const
    {
        EXPECT_NEAR(application.getCanvasPosition().x(), x, 1e-3);
        EXPECT_NEAR(application.getCanvasPosition().y(), y, 1e-3);
    }

    void zoom(float scale)
    {
        application.setCanvasScale(scale);
        viewer->update();
    }

    const QRectF wholeMap{0, 0, 96, 54};
    std::unique_ptr<CanvasViewer> viewer;
};

QPen plainPen(const QColor& color)
{
    return QPen(QBrush(color), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

} // namespace

TEST_F(CanvasViewerTest, HasNoSignalsAndNoSlots)
{
    EXPECT_STREQ(viewer->metaObject()->className(), "norvel::CanvasViewer");
    EXPECT_EQ(viewer->metaObject()->methodCount(), QObject::staticMetaObject.methodCount());
    EXPECT_EQ(viewer->parent(), nullptr);
}

TEST_F(CanvasViewerTest, StandsAboveTheCanvasInTheScene)
{
    ASSERT_TRUE(mapItem());
    EXPECT_EQ(mapItem()->scene(), view().scene());
    EXPECT_EQ(mapItem()->parentItem(), nullptr);
    EXPECT_EQ(mapItem()->zValue(), 10000.0);
    EXPECT_EQ(viewerItem()->zValue(), 10001.0);
    EXPECT_EQ(viewerItem()->type(), 65537);
    EXPECT_EQ(viewerItem()->flags(), QGraphicsItem::ItemIsMovable);
}

TEST_F(CanvasViewerTest, HasAGreyMapAndABlueViewer)
{
    EXPECT_EQ(mapItem()->pen(), plainPen(QColor(128, 128, 128, 255)));
    EXPECT_EQ(mapItem()->brush(), QBrush(QColor(128, 128, 128, 128)));
    EXPECT_EQ(viewerItem()->pen(), plainPen(QColor(0, 0, 128, 255)));
    EXPECT_EQ(viewerItem()->brush(), QBrush(QColor(0, 0, 128, 160)));
}

TEST_F(CanvasViewerTest, TakesTheHostsStyles)
{
    viewer->setCanvasItemStyle(Qt::red, plainPen(Qt::green));
    viewer->setViewerItemStyle(Qt::yellow, QPen(Qt::black, 3.0));
    EXPECT_EQ(mapItem()->brush(), QBrush(Qt::red));
    EXPECT_EQ(mapItem()->pen(), plainPen(Qt::green));
    EXPECT_EQ(viewerItem()->brush(), QBrush(Qt::yellow));
    EXPECT_EQ(viewerItem()->pen(), QPen(Qt::black, 3.0));
}

TEST_F(CanvasViewerTest, IsLaidOutByUpdateAndNotBefore)
{
    EXPECT_EQ(mapItem()->rect(), QRectF());
    EXPECT_EQ(calls("setCanvasPosition"), Calls{});
    viewer->update();
    expectRects(wholeMap, wholeMap); // at scale 1 the viewer fills the map
    EXPECT_EQ(calls("setCanvasPosition").size(), 1U);
    expectPosition(0, 0);
}

TEST_F(CanvasViewerTest, LengthAndPositionTakeEffectAtTheNextUpdate)
{
    viewer->update();
    viewer->setCanvasItemMaxSideLength(192);
    viewer->setPos({500, 300});
    viewer->setCenter();
    expectRects(wholeMap, wholeMap);
    viewer->update();
    expectRects({500, 300, 192, 108}, {500, 300, 192, 108});
}

TEST_F(CanvasViewerTest, FollowsTheProportionsOfTheCanvas)
{
    application.getRvKpConfig()->setKpSize(1080.0F, 1920.0F);
    viewer->update();
    EXPECT_EQ(mapItem()->rect(), QRectF(0, 0, 54, 96));
    application.getRvKpConfig()->setKpSize(700.0F, 700.0F);
    viewer->update();
    EXPECT_EQ(mapItem()->rect(), QRectF(0, 0, 96, 96));
}

TEST_F(CanvasViewerTest, AZoomedCanvasHasASmallerViewerInTheMiddle)
{
    zoom(2.0F); // 96 / 2; 1440 / 2160 x 54
    expectRects(wholeMap, {24, 9, 48, 36});
    expectPosition(0, 0);
}

TEST_F(CanvasViewerTest, DraggingPansTheOtherWayInXAndTheSameWayInY)
{
    zoom(2.0F);
    calls("setCanvasPosition");
    drag({48, 27}, {58, 22});
    // 2 x 800 / 96 = 16.6667 view px for each of the map: -(10) and -5 times that.
    expectRects(wholeMap, {34, 4, 48, 36});
    EXPECT_EQ(calls("setCanvasPosition").size(), 1U);
    expectPosition(-166.6667, -83.3333);
    // The viewer is right of the middle and above it: so is the canvas point in mid-view.
    const QPointF seen = application.convertViewToCanvas({400, 300});
    EXPECT_NEAR(seen.x(), 960 + 10 * 20, 1e-2);
    EXPECT_NEAR(seen.y(), 540 + 5 * 20, 1e-2);
}

TEST_F(CanvasViewerTest, EveryMoveOfADragPans)
{
    zoom(2.0F);
    calls("setCanvasPosition");
    press({30, 20});
    move({33, 21});
    move({35, 25});
    release({35, 25});
    expectRects(wholeMap, {29, 14, 48, 36});
    EXPECT_EQ(calls("setCanvasPosition").size(), 2U);
    move({40, 25});
    expectRects(wholeMap, {29, 14, 48, 36});
}

TEST_F(CanvasViewerTest, AMoveThatWouldLeaveTheMapIsDroppedWhole)
{
    zoom(2.0F); // 24 px of room to the right, 9 below
    calls("setCanvasPosition");
    press({48, 27});
    move({73, 30}); // 25 to the right: too far, so that not even the 3 down are taken
    expectRects(wholeMap, {24, 9, 48, 36});
    EXPECT_EQ(calls("setCanvasPosition"), Calls{});
    move({75, 32}); // by itself a step of 2 and 2, which the map has room for
    expectRects(wholeMap, {26, 11, 48, 36});
    move({75, 12});
    expectRects(wholeMap, {26, 11, 48, 36});
    release({75, 12});
    drag({48, 27}, {70, 34}); // flush with both borders is within
    expectRects(wholeMap, {48, 18, 48, 36});
    expectPosition(-24 * 16.66667, 9 * 16.66667);
}

TEST_F(CanvasViewerTest, AnyButtonDrags)
{
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        viewer->setCenter();
        zoom(2.0F);
        drag({48, 27}, {50, 28}, button);
        expectRects(wholeMap, {26, 10, 48, 36});
    }
}

TEST_F(CanvasViewerTest, TheViewsGesturesAreOffWhileTheViewerIsHeld)
{
    zoom(2.0F);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        calls("enableGesture");
        press({48, 27}, button);
        EXPECT_EQ(calls("enableGesture"), Calls{"false"});
        move({49, 27});
        EXPECT_EQ(calls("enableGesture"), Calls{});
        release({49, 27}, button);
        EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    }
}

TEST_F(CanvasViewerTest, TheSecondPressOfADoubleClickDragsToo)
{
    zoom(2.0F);
    QWidget& viewport = *view().viewport();
    send(viewport, QEvent::MouseButtonDblClick, {48, 27}, Qt::LeftButton, Qt::LeftButton);
    send(viewport, QEvent::MouseMove, {49, 28}, Qt::NoButton, Qt::LeftButton);
    send(viewport, QEvent::MouseButtonRelease, {49, 28}, Qt::LeftButton, Qt::NoButton);
    expectRects(wholeMap, {25, 10, 48, 36});
    EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
}

TEST_F(CanvasViewerTest, TheMapAroundTheViewerIsNoHandle)
{
    zoom(2.0F);
    calls("enableGesture");
    drag({10, 4}, {20, 8});
    expectRects(wholeMap, {24, 9, 48, 36});
    EXPECT_EQ(calls("enableGesture"), Calls{});
}

TEST_F(CanvasViewerTest, KeepsTheViewersCentreWhenTheZoomChanges)
{
    zoom(4.0F); // 24 x 18, at (36, 18)
    drag({48, 27}, {38, 25});
    expectRects(wholeMap, {26, 16, 24, 18});
    zoom(3.0F); // 32 x 24 around (38, 25)
    expectRects(wholeMap, {22, 13, 32, 24});
    expectPosition(10 * 25, -2 * 25); // 3 x 800 / 96 = 25
}

TEST_F(CanvasViewerTest, AViewerThatGrowsBeyondTheMapIsMovedInByWholeNumbers)
{
    zoom(2.0F);
    drag({48, 27}, {24, 18});
    expectRects(wholeMap, {0, 0, 48, 36});
    // 64 x 48 around (24, 18) would begin at (-8, -6); 1.5 x 800 / 96 = 12.5.
    zoom(1.5F);
    expectRects(wholeMap, {0, 0, 64, 48});
    expectPosition(16 * 12.5, -3 * 12.5);

    viewer->setCenter();
    zoom(2.0F);
    drag({48, 27}, {72, 36});
    expectRects(wholeMap, {48, 18, 48, 36});
    // 73.8462 x 54 around (72, 36) would begin at (35.08, 9): 35 + 73.8462 is 12.8462 too far, and
    // 35 - 12.8462 is cut to 22. 9 + 54 is 9 too far.
    zoom(1.3F);
    expectRects(wholeMap, {22, 0, 73.84615, 54});
    // 22 + 36.92308 - 48 = 10.92308; 1.3 x 800 / 96 = 10.83333.
    expectPosition(-118.3333, 0);
}

TEST_F(CanvasViewerTest, AMapElsewhereHasItsViewerOnIt)
{
    viewer->setPos({100, 50});
    zoom(2.0F);
    expectRects({100, 50, 96, 54}, {124, 59, 48, 36});
    drag({148, 77}, {138, 79});
    expectRects({100, 50, 96, 54}, {114, 61, 48, 36});
    expectPosition(10 * 16.66667, 2 * 16.66667);
    // Moved with the viewer where it is, the viewer is beyond the map: brought back to its border.
    viewer->setPos({300, 200});
    viewer->update();
    expectRects({300, 200, 96, 54}, {300, 200, 48, 36});
}

TEST_F(CanvasViewerTest, CentresAgainWhenAskedToAndOnlyOnce)
{
    zoom(2.0F);
    drag({48, 27}, {28, 25});
    expectRects(wholeMap, {4, 7, 48, 36});
    viewer->setCenter();
    expectRects(wholeMap, {4, 7, 48, 36});
    viewer->update();
    expectRects(wholeMap, {24, 9, 48, 36});
    expectPosition(0, 0);
    drag({48, 27}, {28, 25});
    viewer->update();
    expectRects(wholeMap, {4, 7, 48, 36});
}

TEST_F(CanvasViewerTest, AMapThatWasHiddenIsCentredAtTheNextUpdate)
{
    zoom(2.0F);
    drag({48, 27}, {28, 25});
    viewer->hide();
    EXPECT_FALSE(mapItem()->isVisible());
    EXPECT_FALSE(viewerItem()->isVisible());
    expectRects(wholeMap, {4, 7, 48, 36});
    viewer->show();
    EXPECT_TRUE(mapItem()->isVisible());
    EXPECT_TRUE(viewerItem()->isVisible());
    expectRects(wholeMap, {4, 7, 48, 36});
    viewer->update();
    expectRects(wholeMap, {24, 9, 48, 36});
}

TEST_F(CanvasViewerTest, AnUnzoomedCanvasIsNotCentredByItself)
{
    zoom(2.0F);
    drag({48, 27}, {28, 25});
    zoom(0.5F);
    // 192 x 54 around (28, 25) would begin at (-68, -2): 0, and 96 too far: -96.
    expectRects(wholeMap, {-96, 0, 192, 54});
}

TEST_F(CanvasViewerTest, EveryChangeOfTheScenesRectangleLaysOut)
{
    zoom(2.0F);
    calls("setCanvasPosition");
    view().resize(1600, 450);
    // The wider view has room for the whole width: 96 x 27.
    expectRects(wholeMap, {0, 13.5, 96, 27});
    EXPECT_EQ(calls("setCanvasPosition").size(), 1U);
    viewer.reset();
    view().resize(800, 600);
    EXPECT_EQ(calls("setCanvasPosition"), Calls{});
}

TEST_F(CanvasViewerTest, TakesItsItemsOutOfTheSceneWhenItGoes)
{
    viewer->update();
    const int items = view().scene()->items().size();
    viewer.reset();
    EXPECT_EQ(view().scene()->items().size(), items - 2);
    EXPECT_FALSE(mapItem());
}

TEST_F(CanvasViewerTest, TwoMapsInOneSceneAreIndependent)
{
    CanvasViewer other(&application);
    other.setPos({600, 400});
    other.update();
    zoom(2.0F);
    drag({48, 27}, {58, 27});
    EXPECT_TRUE(view().scene()->itemAt(QPointF(648, 427), {}));
    expectPosition(-166.6667, 0);
    other.update(); // pans to where its own viewer is
    expectPosition(0, 0);
}

TEST_F(CanvasViewerTest, IsPaintedOverTheCanvas)
{
    zoom(2.0F);
    const QImage image = grabbed();
    // On the black canvas: half of grey 128 on the map; 160 / 255 of blue 128 over it below.
    EXPECT_EQ(image.pixelColor(10, 27), QColor(64, 64, 64));
    const QColor seen = image.pixelColor(48, 27);
    EXPECT_NEAR(seen.red(), 64 * 95 / 255, 1);
    EXPECT_NEAR(seen.blue(), 64 * 95 / 255 + 128 * 160 / 255, 2);
    viewer->hide();
    EXPECT_EQ(grabbed().pixelColor(48, 27), QColor(0, 0, 0));
}
