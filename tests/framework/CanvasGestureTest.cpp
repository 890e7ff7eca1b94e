// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ShownCanvas.h"

#include <rvkpcore/RvCallLog.h>

#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QWheelEvent>
#include <QWindow>

using namespace qrvkp;

namespace {

/// The mouse on the window of the view: its events take the way of real ones.
class CanvasGestureTest : public ShownCanvas
{
protected:
    QWindow* window() { return view().windowHandle(); }

    void press(const QPoint& point, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(window(), button, {}, point);
    }
    void move(const QPoint& point) { QTest::mouseMove(window(), point); }
    void release(const QPoint& point, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(window(), button, {}, point);
    }
    void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton)
    {
        press(from, button);
        move((from + to) / 2);
        move(to);
        release(to, button);
    }

    /// Sends an event by itself, for what a window would not let through.
    void send(QEvent::Type type, const QPointF& point, Qt::MouseButton button,
              Qt::MouseButtons buttons)
    {
        const QPoint global = view().viewport()->mapToGlobal(point.toPoint());
        QMouseEvent event(type, point, global, button, buttons, {});
        QCoreApplication::sendEvent(view().viewport(), &event);
    }

    /// Turns the wheel at a point of the viewport; true when the turn was taken.
    bool wheel(const QPointF& point, const QPoint& angle)
    {
        QWheelEvent event(point, view().viewport()->mapToGlobal(point.toPoint()), {}, angle,
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view().viewport(), &event);
        return event.isAccepted();
    }
    bool wheelNotches(const QPointF& point, int notches)
    {
        return wheel(point, {0, notches * 120});
    }

    /// An item of the scene that the mouse can move.
    QGraphicsRectItem* addMovable()
    {
        QGraphicsRectItem* item = view().scene()->addRect(0, 0, 100, 100, Qt::NoPen, Qt::white);
        item->setPos(200, 200);
        item->setFlag(QGraphicsItem::ItemIsMovable);
        return item;
    }

    void expectUntouched() const
    {
        EXPECT_EQ(application.getCanvasScale(), 1.0F);
        EXPECT_EQ(application.getCanvasPosition(), QPointF(0, 0));
    }
};

/// An item that takes the wheel.
class WheelItem : public QGraphicsRectItem
{
public:
    using QGraphicsRectItem::QGraphicsRectItem;

    int turns = 0;

protected:
    void wheelEvent(QGraphicsSceneWheelEvent*) override { ++turns; }
};

} // namespace

TEST_F(CanvasGestureTest, DraggingMovesTheCanvasWithTheCursor)
{
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
        application.setCanvasPosition(5.0F, 5.0F);
        drag({400, 300}, {430, 280}, button);
        EXPECT_EQ(application.getCanvasPosition(), QPointF(35, 25));
        move({100, 100});
        EXPECT_EQ(application.getCanvasPosition(), QPointF(35, 25));
    }
}

TEST_F(CanvasGestureTest, TheCanvasPointUnderTheCursorStaysThereWhileDragging)
{
    application.setCanvasScale(3.0F);
    const QPointF grabbedPoint = application.convertViewToCanvas({400, 300});
    press({400, 300});
    for (const QPoint& point : {QPoint(410, 290), QPoint(10, 20), QPoint(799, 599)}) {
        move(point);
        EXPECT_TRUE(isNear(application.convertCanvasToView(grabbedPoint), point));
    }
    release({799, 599});
}

TEST_F(CanvasGestureTest, TheOtherButtonsDoNotDrag)
{
    drag({400, 300}, {430, 280}, Qt::RightButton);
    expectUntouched();
}

TEST_F(CanvasGestureTest, ASecondPressSoonAfterDragsToo)
{
    send(QEvent::MouseButtonPress, {400, 300}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, {400, 300}, Qt::LeftButton, Qt::NoButton);
    send(QEvent::MouseButtonDblClick, {400, 300}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, {405, 300}, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, {405, 300}, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(application.getCanvasPosition(), QPointF(5, 0));
}

TEST_F(CanvasGestureTest, AnotherButtonMeanwhileNeitherEndsNorRestartsADrag)
{
    press({400, 300});
    move({410, 300});
    press({410, 300}, Qt::MiddleButton);
    move({420, 300});
    release({420, 300}, Qt::MiddleButton);
    move({430, 300});
    release({430, 300});
    EXPECT_EQ(application.getCanvasPosition(), QPointF(30, 0));
}

TEST_F(CanvasGestureTest, AnItemThatTakesThePressIsMovedInsteadOfTheCanvas)
{
    const QGraphicsRectItem* item = addMovable();
    drag({250, 250}, {290, 240});
    EXPECT_EQ(item->pos(), QPointF(240, 190));
    expectUntouched();

    drag({500, 400}, {510, 390});
    EXPECT_EQ(item->pos(), QPointF(240, 190));
    EXPECT_EQ(application.getCanvasPosition(), QPointF(10, 10));
}

TEST_F(CanvasGestureTest, AnItemThatDoesNotTakeThePressIsNoObstacle)
{
    QGraphicsRectItem* item = addMovable();
    item->setFlag(QGraphicsItem::ItemIsMovable, false);
    drag({250, 250}, {290, 240});
    EXPECT_EQ(item->pos(), QPointF(200, 200));
    EXPECT_EQ(application.getCanvasPosition(), QPointF(40, 10));
}

TEST_F(CanvasGestureTest, TheWheelZoomsByAStepPerNotchInBothDirections)
{
    EXPECT_TRUE(wheelNotches({400, 300}, 1));
    const float step = application.getCanvasScale();
    EXPECT_GT(step, 1.0F);
    EXPECT_LT(step, 2.0F);
    wheelNotches({400, 300}, 2);
    EXPECT_NEAR(application.getCanvasScale(), step * step * step, 1e-5);
    wheelNotches({400, 300}, -4);
    EXPECT_NEAR(application.getCanvasScale(), 1 / step, 1e-5);
    wheel({400, 300}, {0, 60});
    wheel({400, 300}, {0, 60});
    EXPECT_NEAR(application.getCanvasScale(), 1.0F, 1e-5);
    EXPECT_TRUE(isNear(application.getCanvasPosition(), {0, 0}));
}

TEST_F(CanvasGestureTest, TheCanvasPointUnderTheCursorStaysThereWhileZooming)
{
    application.setCanvasPosition(33.0F, -44.0F);
    for (const QPointF& cursor : {QPointF(100, 150), QPointF(799.5, 0), QPointF(400, 599)}) {
        for (const int notches : {1, 1, 5, -2, -9}) {
            const QPointF point = application.convertViewToCanvas(cursor);
            EXPECT_TRUE(wheelNotches(cursor, notches));
            EXPECT_TRUE(isNear(application.convertCanvasToView(point), cursor, 1e-6));
            EXPECT_TRUE(isNear(application.convertViewToCanvas(cursor), point, 1e-6));
        }
    }
}

TEST_F(CanvasGestureTest, TheWheelKeepsTheZoomWithinBounds)
{
    wheelNotches({400, 300}, 1000);
    EXPECT_EQ(application.getCanvasScale(), 50.0F);
    wheelNotches({400, 300}, 1);
    EXPECT_EQ(application.getCanvasScale(), 50.0F);
    wheelNotches({400, 300}, -1000);
    EXPECT_EQ(application.getCanvasScale(), 0.05F);
    wheelNotches({400, 300}, -1);
    EXPECT_EQ(application.getCanvasScale(), 0.05F);
}

TEST_F(CanvasGestureTest, TheWheelLeadsBackFromAZoomBeyondTheBounds)
{
    application.setCanvasScale(200.0F);
    wheelNotches({400, 300}, 1);
    EXPECT_EQ(application.getCanvasScale(), 200.0F);
    wheelNotches({400, 300}, -1);
    EXPECT_LT(application.getCanvasScale(), 200.0F);
    EXPECT_GT(application.getCanvasScale(), 100.0F);
    application.setCanvasScale(0.001F);
    wheelNotches({400, 300}, -1);
    EXPECT_EQ(application.getCanvasScale(), 0.001F);
    wheelNotches({400, 300}, 1);
    EXPECT_GT(application.getCanvasScale(), 0.001F);
}

TEST_F(CanvasGestureTest, AWheelTurnedSidewaysDoesNothing)
{
    EXPECT_FALSE(wheel({400, 300}, {120, 0}));
    expectUntouched();
}

TEST_F(CanvasGestureTest, AnItemThatTakesTheWheelKeepsItFromTheCanvas)
{
    auto* item = new WheelItem(200, 200, 100, 100);
    view().scene()->addItem(item);
    wheelNotches({250, 250}, 1);
    EXPECT_EQ(item->turns, 1);
    expectUntouched();
    wheelNotches({350, 250}, 1);
    EXPECT_EQ(item->turns, 1);
    EXPECT_GT(application.getCanvasScale(), 1.0F);
}

TEST_F(CanvasGestureTest, NothingHappensWhileGesturesAreOff)
{
    application.enableGesture(false);
    drag({400, 300}, {430, 280});
    drag({400, 300}, {430, 280}, Qt::MiddleButton);
    EXPECT_FALSE(wheelNotches({400, 300}, 3));
    expectUntouched();

    const QGraphicsRectItem* item = addMovable();
    drag({250, 250}, {290, 240});
    EXPECT_EQ(item->pos(), QPointF(240, 190));
    expectUntouched();

    application.enableGesture(true);
    drag({400, 300}, {430, 280});
    EXPECT_EQ(application.getCanvasPosition(), QPointF(30, 20));
    EXPECT_TRUE(wheelNotches({400, 300}, 3));
}

TEST_F(CanvasGestureTest, SwitchingGesturesOffEndsADrag)
{
    press({400, 300});
    move({410, 300});
    application.enableGesture(false);
    move({420, 300});
    application.enableGesture(true);
    move({430, 300});
    release({430, 300});
    EXPECT_EQ(application.getCanvasPosition(), QPointF(10, 0));
}

TEST_F(CanvasGestureTest, AReleaseThatGotLostEndsTheDragAtTheNextMove)
{
    view().viewport()->setMouseTracking(true); // as it is when an item wants to be hovered over
    send(QEvent::MouseButtonPress, {400, 300}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, {410, 300}, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseMove, {450, 300}, Qt::NoButton, Qt::NoButton);
    send(QEvent::MouseMove, {460, 300}, Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(application.getCanvasPosition(), QPointF(10, 0));
}

TEST_F(CanvasGestureTest, APressAfterAReleaseThatGotLostBeginsAnew)
{
    const QGraphicsRectItem* item = addMovable();
    send(QEvent::MouseButtonPress, {400, 300}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, {410, 300}, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonPress, {500, 300}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, {505, 300}, Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(application.getCanvasPosition(), QPointF(15, 0));
    EXPECT_EQ(item->pos(), QPointF(200, 200));

    send(QEvent::MouseButtonPress, {250, 250}, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, {260, 250}, Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(application.getCanvasPosition(), QPointF(15, 0));
    EXPECT_EQ(item->pos(), QPointF(210, 200));
    send(QEvent::MouseButtonRelease, {260, 250}, Qt::LeftButton, Qt::NoButton);
}

TEST_F(CanvasGestureTest, AViewMadeLaterHasTheSetting)
{
    application.enableGesture(false);
    delete application.getGraphicsView();
    SetUp();
    drag({400, 300}, {430, 280});
    EXPECT_FALSE(wheelNotches({400, 300}, 3));
    expectUntouched();
}

TEST_F(CanvasGestureTest, AHostMayPlaceTheCanvasInTheMiddleOfADrag)
{
    press({400, 300});
    move({410, 310});
    application.setCanvasPosition(100.0F, 100.0F);
    move({415, 305});
    release({415, 305});
    EXPECT_EQ(application.getCanvasPosition(), QPointF(105, 105));
}

TEST_F(CanvasGestureTest, GesturesAreNoCallsOfTheHost)
{
    RvCallLog::start();
    drag({400, 300}, {430, 280});
    wheelNotches({400, 300}, 1);
    RvCallLog::stop();
    EXPECT_EQ(RvCallLog::count(), 0U);
}
