// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/TestEnvironment.h"
#include "widgets/support/ShownEditor.h"

#include <norvel/widgets/canvas/CanvasViewer.h>
#include <norvel/widgets/canvas/CanvasViewerWidget.h>
#include <norvel/widgets/canvas/ViewerWidget.h>

#include <QDialog>
#include <QGraphicsProxyWidget>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>
#include <QWindow>

#include <functional>
#include <optional>
#include <utility>

using namespace norvel;

namespace {

using Calls = std::vector<std::string>;

/// Sends a widget a mouse event as the window system does: the mouse is there now.
void sendFromWindowSystem(QWidget& widget, QEvent::Type type, const QPoint& position = {1, 1})
{
    QMouseEvent event(type, position, widget.mapToGlobal(position), Qt::LeftButton, Qt::LeftButton,
                      {});
    QSpontaneKeyEvent::setSpontaneous(&event);
    QCoreApplication::instance()->notify(&widget, &event);
}

/// A canvas at scale 2, and a place on it where no map is.
class InterruptedDragTest : public ShownEditor
{
protected:
    /// Drags the canvas itself, and tells whether it has moved.
    bool canvasCanBePanned()
    {
        const QPointF before = application.getCanvasPosition();
        drag({600, 500}, {607, 503});
        return application.getCanvasPosition() == before + QPointF(7, -3);
    }
};

/// The map as a widget at (0, 0) of a frame in the window, with the viewer of 48 x 36 at (24, 9).
class InterruptedWidgetDragTest : public InterruptedDragTest
{
protected:
    void SetUp() override
    {
        InterruptedDragTest::SetUp();
        if (HasFatalFailure())
            return;
        frame = std::make_unique<QWidget>(window.get());
        frame->setGeometry(0, 0, 200, 150);
        map = new CanvasViewerWidget(&application, frame.get());
        viewer = map->findChild<ViewerWidget*>();
        frame->show();
        map->show();
        application.setCanvasScale(2.0F);
        map->update();
        calls("");
    }
    void TearDown() override
    {
        frame.reset();
        InterruptedDragTest::TearDown();
    }

    void beginDrag()
    {
        press({34, 19});
        move({36, 20});
        ASSERT_EQ(viewer->rectF(), QRectF(26, 10, 48, 36));
        ASSERT_EQ(calls("enableGesture"), Calls{"false"});
    }

    /// What is left of the drag, whose button is still held, does nothing.
    void expectEnded()
    {
        EXPECT_EQ(calls("enableGesture"), Calls{"true"});
        QSignalSpy moved(viewer, &ViewerWidget::sigMoved);
        const QRectF before = viewer->rectF();
        move({40, 25});
        send(*viewer, QEvent::MouseMove, {20, 20}, Qt::NoButton, Qt::LeftButton);
        release({40, 25});
        send(*viewer, QEvent::MouseButtonRelease, {20, 20}, Qt::LeftButton, Qt::NoButton);
        EXPECT_EQ(viewer->rectF(), before);
        EXPECT_EQ(moved.count(), 0);
        EXPECT_EQ(calls("enableGesture"), Calls{});
    }

    /// The map and the canvas can be used as if nothing had been.
    void expectUsable()
    {
        const QRectF before = viewer->rectF();
        drag({48, 27}, {52, 30}, Qt::RightButton);
        EXPECT_EQ(viewer->rectF(), before);
        drag({48, 27}, {50, 28});
        EXPECT_EQ(viewer->rectF(), before.translated(2, 1));
        EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true", "false", "true"}));
        EXPECT_TRUE(canvasCanBePanned());
    }

    void expectInterruptedBy(const std::function<void()>& interrupt)
    {
        beginDrag();
        interrupt();
        expectEnded();
    }

    std::unique_ptr<QWidget> frame;
    CanvasViewerWidget* map = nullptr; ///< belongs to the frame
    ViewerWidget* viewer = nullptr;    ///< belongs to the map
};

/// The map as an item at (300, 300) of the scene, with the viewer of 48 x 36 at (324, 309).
class InterruptedItemDragTest : public InterruptedDragTest
{
protected:
    void SetUp() override
    {
        InterruptedDragTest::SetUp();
        if (HasFatalFailure())
            return;
        map = std::make_unique<CanvasViewer>(&application);
        map->setPos({300, 300});
        application.setCanvasScale(2.0F);
        map->update();
        calls("");
    }

    QGraphicsRectItem* viewerItem()
    {
        for (QGraphicsItem* item : view().scene()->items()) {
            if (item->type() == QGraphicsItem::UserType + 1)
                return dynamic_cast<QGraphicsRectItem*>(item);
        }
        return nullptr;
    }

    void beginDrag()
    {
        press({340, 320});
        move({342, 321});
        ASSERT_EQ(viewerItem()->rect(), QRectF(326, 310, 48, 36));
        ASSERT_EQ(calls("enableGesture"), Calls{"false"});
    }

    void expectEnded()
    {
        EXPECT_EQ(calls("enableGesture"), Calls{"true"});
        const QRectF before = viewerItem()->rect();
        move({345, 325});
        release({345, 325});
        EXPECT_EQ(viewerItem()->rect(), before);
        EXPECT_EQ(calls("enableGesture"), Calls{});
    }

    void expectUsable()
    {
        const QRectF before = viewerItem()->rect();
        EXPECT_TRUE(canvasCanBePanned());
        EXPECT_EQ(viewerItem()->rect(), before);
        EXPECT_EQ(calls("enableGesture"), Calls{});
        drag({348, 327}, {350, 328});
        EXPECT_EQ(viewerItem()->rect(), before.translated(2, 1));
        EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
    }

    void expectInterruptedBy(const std::function<void()>& interrupt)
    {
        beginDrag();
        interrupt();
        expectEnded();
    }

    std::unique_ptr<CanvasViewer> map;
};

} // namespace

TEST_F(InterruptedWidgetDragTest, HidingTheMapEndsTheDrag)
{
    expectInterruptedBy([this] { map->hide(); });
    map->show();
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, HidingAnAncestorEndsTheDrag)
{
    expectInterruptedBy([this] { frame->hide(); });
    frame->show();
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, HidingAMapThatWasNeverSeenEndsTheDrag)
{
    QWidget unseen;
    CanvasViewerWidget other(&application, &unseen);
    other.update();
    send(*other.findChild<ViewerWidget*>(), QEvent::MouseButtonPress, {5, 5}, Qt::LeftButton,
         Qt::LeftButton);
    other.hide();
    EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
}

TEST_F(InterruptedWidgetDragTest, HidingTheWindowEndsTheDrag)
{
    expectInterruptedBy([this] { window->hide(); });
    window->show();
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, DisablingTheMapEndsTheDrag)
{
    expectInterruptedBy([this] { map->setEnabled(false); });
    map->setEnabled(true);
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, DisablingAnAncestorForAMomentEndsTheDrag)
{
    expectInterruptedBy([this] {
        frame->setEnabled(false);
        frame->setEnabled(true);
    });
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, AModalWindowThatOpensWhenTheViewerHasMovedEndsTheDrag)
{
    QDialog dialog(window.get());
    Calls callsInDialog;
    bool isFirst = true;
    QObject::connect(map, &CanvasViewerWidget::sigMoved, map, [&] {
        if (!std::exchange(isFirst, false))
            return;
        QTimer::singleShot(0, &dialog, [&] {
            callsInDialog = calls("enableGesture");
            QTest::mouseRelease(dialog.windowHandle(), Qt::LeftButton, {}, {5, 5});
            dialog.accept();
        });
        dialog.exec();
    });
    press({34, 19});
    move({36, 20});
    EXPECT_FALSE(isFirst);
    EXPECT_EQ(callsInDialog, (Calls{"false", "true"}));
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, APopupThatOpensWhenTheViewerHasMovedEndsTheDrag)
{
    std::optional<ExpectedWarnings> warnings;
    if (QGuiApplication::platformName() == "offscreen")
        warnings.emplace("This plugin does not support"); // to grab the keyboard
    QWidget popup(window.get(), Qt::Popup);
    popup.resize(50, 50);
    const QMetaObject::Connection opening =
        QObject::connect(map, &CanvasViewerWidget::sigMoved, &popup, &QWidget::show);
    press({34, 19});
    move({36, 20});
    ASSERT_TRUE(popup.isVisible());
    QTest::mouseRelease(popup.windowHandle(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
    popup.hide();
    QObject::disconnect(opening);
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, AMouseThatAnotherWidgetGetsEndsTheDrag)
{
    for (const QEvent::Type type : {QEvent::MouseMove, QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
        QWidget other;
        map->setCenter();
        calls("");
        expectInterruptedBy([&] { sendFromWindowSystem(other, type); });
    }
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, AGrabThatIsLostEndsTheDrag)
{
    expectInterruptedBy([this] {
        QEvent lost(QEvent::UngrabMouse);
        QCoreApplication::sendEvent(viewer, &lost);
    });
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, EventsThatAHostPassesOnLeaveTheDrag)
{
    beginDrag();
    send(view(), QEvent::MouseMove, {5, 5}, Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(calls("enableGesture"), Calls{});
    move({38, 20});
    EXPECT_EQ(viewer->rectF(), QRectF(28, 10, 48, 36));
    release({38, 20});
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
}

TEST_F(InterruptedWidgetDragTest, WhatOtherWidgetsMeetLeavesTheDrag)
{
    QWidget other(window.get());
    other.setGeometry(300, 0, 50, 50);
    other.show();
    beginDrag();
    other.setEnabled(false);
    other.hide();
    map->setEnabled(true);
    EXPECT_EQ(calls("enableGesture"), Calls{});
    move({38, 20});
    EXPECT_EQ(viewer->rectF(), QRectF(28, 10, 48, 36));
    release({38, 20});
}

TEST_F(InterruptedWidgetDragTest, AWindowThatIsNoLongerActiveKeepsTheDrag)
{
    beginDrag();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_FALSE(window->isActiveWindow());
    EXPECT_EQ(calls("enableGesture"), Calls{});
    move({38, 20});
    EXPECT_EQ(viewer->rectF(), QRectF(28, 10, 48, 36));
    release({38, 20});
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
}

TEST_F(InterruptedWidgetDragTest, TheSecondButtonsDragIsInterruptedToo)
{
    press({34, 19}, Qt::RightButton);
    map->hide();
    EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
    release({34, 19}, Qt::RightButton);
    map->show();
    expectUsable();
}

TEST_F(InterruptedWidgetDragTest, AMapThatGoesInADragGivesTheGesturesBack)
{
    beginDrag();
    delete map;
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    move({38, 20});
    release({38, 20});
    EXPECT_EQ(calls("enableGesture"), Calls{});
    EXPECT_TRUE(canvasCanBePanned());
}

TEST_F(InterruptedWidgetDragTest, AMapThatGoesWhenItsViewerHasMovedGivesTheGesturesBack)
{
    const QPointer<QWidget> watched(map);
    QObject::connect(map, &CanvasViewerWidget::sigMoved, window.get(), [this] { delete map; });
    press({34, 19});
    move({36, 20});
    EXPECT_FALSE(watched);
    EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
    release({36, 20});
    EXPECT_EQ(calls("enableGesture"), Calls{});
    EXPECT_TRUE(canvasCanBePanned());
}

TEST_F(InterruptedWidgetDragTest, WithoutADragTheHostsGesturesStayOff)
{
    drag({34, 19}, {35, 19});
    application.enableGesture(false);
    calls("");
    map->hide();
    map->show();
    window->setEnabled(false);
    window->setEnabled(true);
    delete map;
    EXPECT_EQ(calls("enableGesture"), Calls{});
    EXPECT_FALSE(canvasCanBePanned());
}

TEST_F(InterruptedWidgetDragTest, GesturesThatTheHostSwitchesOffAfterAnInterruptionStayOff)
{
    beginDrag();
    frame->setEnabled(false);
    application.enableGesture(false);
    frame->setEnabled(true);
    release({36, 20});
    EXPECT_EQ(calls("enableGesture"), (Calls{"true", "false"}));
}

TEST_F(InterruptedWidgetDragTest, AMapThatIsEmbeddedInASceneIsDraggedAsAnyOther)
{
    QGraphicsScene scene(0, 0, 300, 200);
    auto* embedded = new CanvasViewerWidget(&application, nullptr);
    scene.addWidget(embedded)->setPos(0, 0); // which owns it now
    embedded->show();
    const ViewerWidget& inside = *embedded->findChild<ViewerWidget*>();
    QGraphicsView stage(&scene);
    stage.setFrameShape(QFrame::NoFrame);
    stage.resize(300, 200);
    stage.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&stage));
    const QRectF before = inside.rectF();
    QWidget& ground = *stage.viewport();
    sendFromWindowSystem(ground, QEvent::MouseButtonPress, {48, 27});
    sendFromWindowSystem(ground, QEvent::MouseMove, {50, 28});
    sendFromWindowSystem(ground, QEvent::MouseMove, {52, 28});
    EXPECT_EQ(inside.rectF(), before.translated(4, 1));
    EXPECT_EQ(calls("enableGesture"), Calls{"false"});
    sendFromWindowSystem(ground, QEvent::MouseButtonRelease, {52, 28});
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
}

TEST_F(InterruptedItemDragTest, HidingTheMapEndsTheDrag)
{
    expectInterruptedBy([this] { map->hide(); });
    map->show();
    expectUsable();
}

TEST_F(InterruptedItemDragTest, DisablingTheMapEndsTheDrag)
{
    expectInterruptedBy([this] { viewerItem()->parentItem()->setEnabled(false); });
    viewerItem()->parentItem()->setEnabled(true);
    expectUsable();
}

TEST_F(InterruptedItemDragTest, AMapWithoutItsSceneEndsTheDrag)
{
    beginDrag();
    QGraphicsItem* const item = viewerItem()->parentItem();
    view().scene()->removeItem(item);
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    view().scene()->addItem(item);
    move({345, 325});
    release({345, 325});
    expectUsable();
}

TEST_F(InterruptedItemDragTest, AnotherItemThatTakesTheMouseEndsTheDrag)
{
    expectInterruptedBy([this] { view().scene()->addRect(0, 0, 9, 9)->grabMouse(); });
}

TEST_F(InterruptedItemDragTest, AMouseThatAnotherWidgetGetsEndsTheDrag)
{
    QWidget other;
    expectInterruptedBy([&] { sendFromWindowSystem(other, QEvent::MouseButtonRelease); });
    expectUsable();
}

TEST_F(InterruptedItemDragTest, HidingTheViewEndsTheDrag)
{
    expectInterruptedBy([this] { view().hide(); });
    view().show();
    expectUsable();
}

TEST_F(InterruptedItemDragTest, HidingTheWindowEndsTheDrag)
{
    expectInterruptedBy([this] { window->hide(); });
    window->show();
    expectUsable();
}

TEST_F(InterruptedItemDragTest, DisablingTheWindowEndsTheDrag)
{
    expectInterruptedBy([this] { window->setEnabled(false); });
    window->setEnabled(true);
    expectUsable();
}

TEST_F(InterruptedItemDragTest, AModalWindowEndsTheDrag)
{
    beginDrag();
    QDialog dialog(window.get());
    dialog.open();
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    QTest::mouseRelease(dialog.windowHandle(), Qt::LeftButton, {}, {5, 5});
    dialog.close();
    // A press on the canvas goes to the canvas again, and not to the item that had the mouse.
    expectUsable();
}

TEST_F(InterruptedItemDragTest, EventsWithoutAGrabAreInterruptedToo)
{
    const auto pressByHand = [this] {
        QGraphicsSceneMouseEvent event(QEvent::GraphicsSceneMousePress);
        event.setButton(Qt::LeftButton);
        view().scene()->sendEvent(viewerItem(), &event);
        ASSERT_EQ(calls("enableGesture"), Calls{"false"});
    };
    QGraphicsItem& item = *viewerItem()->parentItem();
    pressByHand();
    item.setVisible(false);
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    item.setVisible(true);
    pressByHand();
    item.setEnabled(false);
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    item.setEnabled(true);
    pressByHand();
    view().scene()->removeItem(&item);
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
}

TEST_F(InterruptedItemDragTest, AMapThatGoesInADragGivesTheGesturesBack)
{
    beginDrag();
    map.reset();
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    move({345, 320});
    release({345, 320});
    EXPECT_EQ(calls("enableGesture"), Calls{});
    EXPECT_TRUE(canvasCanBePanned());
}

TEST_F(InterruptedItemDragTest, AClearedSceneGivesTheGesturesBack)
{
    beginDrag();
    view().scene()->clear();
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    release({345, 320});
    EXPECT_TRUE(canvasCanBePanned());
}

TEST_F(InterruptedItemDragTest, AViewThatGoesInADragGivesTheGesturesBack)
{
    beginDrag();
    delete application.getGraphicsView();
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    view().setParent(window.get()); // a new one
    view().setGeometry(0, 0, 800, 600);
    view().show();
    EXPECT_TRUE(canvasCanBePanned());
}

TEST_F(InterruptedItemDragTest, AWindowThatGoesInADragGivesTheGesturesBack)
{
    beginDrag();
    window.reset();
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
}

TEST_F(InterruptedItemDragTest, WithoutADragTheHostsGesturesStayOff)
{
    drag({340, 320}, {341, 320});
    application.enableGesture(false);
    calls("");
    map->hide();
    map->show();
    window->setEnabled(false);
    window->setEnabled(true);
    map.reset();
    EXPECT_EQ(calls("enableGesture"), Calls{});
    EXPECT_FALSE(canvasCanBePanned());
}
