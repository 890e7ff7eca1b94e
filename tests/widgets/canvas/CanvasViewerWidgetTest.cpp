// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/support/PaintCount.h"
#include "widgets/support/ShownEditor.h"

#include <norvel/widgets/canvas/CanvasViewerWidget.h>
#include <norvel/widgets/canvas/ViewerWidget.h>

#include <QGraphicsScene>
#include <QMetaMethod>
#include <QPainter>
#include <QSignalSpy>

using norvel::CanvasViewerWidget;
using norvel::ViewerWidget;

namespace {

using Calls = std::vector<std::string>;

/// The map as a widget over a view of 800 x 600 with a canvas of 1920 x 1080, in the window's upper
/// left corner: 96 x 54, with s x 800 / 96 view px for each of its own at scale s.
class CanvasViewerWidgetTest : public ShownEditor
{
protected:
    void SetUp() override
    {
        ShownEditor::SetUp();
        if (HasFatalFailure())
            return;
        map = std::make_unique<CanvasViewerWidget>(&application, window.get());
        map->show();
    }
    void TearDown() override
    {
        map.reset();
        ShownEditor::TearDown();
    }

    ViewerWidget& viewer() { return *map->findChild<ViewerWidget*>(); }

    /// The viewer as it is known, and the whole px that its widget covers.
    void expectViewer(const QRectF& rect)
    {
        EXPECT_NEAR(viewer().rectF().x(), rect.x(), 1e-4);
        EXPECT_NEAR(viewer().rectF().y(), rect.y(), 1e-4);
        EXPECT_NEAR(viewer().rectF().width(), rect.width(), 1e-4);
        EXPECT_NEAR(viewer().rectF().height(), rect.height(), 1e-4);
        EXPECT_EQ(viewer().pos(), QPoint(static_cast<int>(viewer().rectF().x()),
                                         static_cast<int>(viewer().rectF().y())));
        EXPECT_EQ(viewer().size(), QSize(static_cast<int>(viewer().rectF().width()),
                                         static_cast<int>(viewer().rectF().height())));
    }

    void expectPosition(double x, double y) const
    {
        EXPECT_NEAR(application.getCanvasPosition().x(), x, 2e-3);
        EXPECT_NEAR(application.getCanvasPosition().y(), y, 2e-3);
    }

    void zoom(float scale)
    {
        application.setCanvasScale(scale);
        map->update();
    }

    std::unique_ptr<CanvasViewerWidget> map;
};

void expectOneSignal(const QMetaObject& meta)
{
    ASSERT_EQ(meta.methodCount(), QWidget::staticMetaObject.methodCount() + 1);
    EXPECT_EQ(meta.indexOfSignal("sigMoved(QPointF)"), QWidget::staticMetaObject.methodCount());
    EXPECT_EQ(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Signal);
}

} // namespace

TEST_F(CanvasViewerWidgetTest, HasOneSignalAndNoSlots)
{
    EXPECT_STREQ(map->metaObject()->className(), "norvel::CanvasViewerWidget");
    expectOneSignal(CanvasViewerWidget::staticMetaObject);
    expectOneSignal(ViewerWidget::staticMetaObject);
}

TEST_F(CanvasViewerWidgetTest, StandsInTheCornerOfItsParent)
{
    EXPECT_EQ(map->parentWidget(), window.get());
    EXPECT_EQ(map->pos(), QPoint(0, 0));
    EXPECT_EQ(viewer().parentWidget(), map.get());
}

TEST_F(CanvasViewerWidgetTest, HasNoRectangleUntilItIsLaidOut)
{
    const CanvasViewerWidget fresh(&application, window.get());
    EXPECT_EQ(fresh.rectF(), QRectF());
    EXPECT_EQ(fresh.findChild<ViewerWidget*>()->rectF(), QRectF());
}

TEST_F(CanvasViewerWidgetTest, AtScaleOneTheViewerFillsTheMap)
{
    EXPECT_EQ(map->rectF(), QRectF(0, 0, 96, 54));
    EXPECT_EQ(map->size(), QSize(96, 54));
    expectViewer({0, 0, 96, 54});
    expectPosition(0, 0);
}

TEST_F(CanvasViewerWidgetTest, TheWidgetHasTheWholePixelsOfTheMap)
{
    application.getRvKpConfig()->setKpSize(1000.0F, 333.0F);
    map->setMaxSideLength(101);
    EXPECT_EQ(map->size(), QSize(96, 54));
    map->update();
    // 101 / 1000 x 333 = 33.633
    EXPECT_NEAR(map->rectF().height(), 33.633, 1e-4);
    EXPECT_EQ(map->size(), QSize(101, 33));
    EXPECT_EQ(map->minimumSize(), QSize(101, 33));
    EXPECT_EQ(map->maximumSize(), QSize(101, 33));
}

TEST_F(CanvasViewerWidgetTest, DraggingMovesTheViewerAndPans)
{
    zoom(2.0F);
    expectViewer({24, 9, 48, 36});
    calls("setCanvasPosition");
    drag({34, 19}, {44, 14});
    expectViewer({34, 4, 48, 36});
    // 2 x 800 / 96 = 16.6667: only x is negated.
    EXPECT_EQ(calls("setCanvasPosition").size(), 1U);
    expectPosition(-166.6667, -83.3333);
}

TEST_F(CanvasViewerWidgetTest, TellsTheViewersCentreInCanvasPixelsFromTheBottomLeft)
{
    zoom(2.0F);
    QSignalSpy moved(map.get(), &CanvasViewerWidget::sigMoved);
    QSignalSpy movedInside(&viewer(), &ViewerWidget::sigMoved);
    press({34, 19});
    EXPECT_EQ(moved.count(), 0);
    move({44, 14});
    // Centre (58, 22) of 96 x 54, 1920 / 96 = 20 canvas px for each: (58 x 20, (54 - 22) x 20).
    ASSERT_EQ(moved.count(), 1);
    EXPECT_EQ(moved[0][0].toPointF(), QPointF(1160, 640));
    move({44, 19});
    ASSERT_EQ(moved.count(), 2);
    EXPECT_EQ(moved[1][0].toPointF(), QPointF(1160, 540));
    release({44, 19});
    EXPECT_EQ(moved.count(), 2);
    EXPECT_EQ(movedInside.count(), 2);
}

TEST_F(CanvasViewerWidgetTest, TellsTheCentreInSinglePrecision)
{
    map->setMaxSideLength(97);
    zoom(2.0F);
    QSignalSpy moved(map.get(), &CanvasViewerWidget::sigMoved);
    drag({34, 19}, {37, 19});
    ASSERT_EQ(moved.count(), 1);
    const float ratio = 1920.0F / 97.0F;
    const QPointF center = viewer().rectF().center();
    EXPECT_EQ(moved[0][0].toPointF().x(),
              static_cast<double>(static_cast<float>(center.x()) * ratio));
    EXPECT_EQ(moved[0][0].toPointF().y(),
              static_cast<double>(static_cast<float>(map->rectF().height() - center.y()) * ratio));
}

TEST_F(CanvasViewerWidgetTest, AMoveBeyondTheMapStopsFlushWithItsBorder)
{
    zoom(2.0F); // 24 px of room on either side, 9 above and below
    QSignalSpy moved(map.get(), &CanvasViewerWidget::sigMoved);
    drag({34, 19}, {90, 22}); // 56 to the right, of which 24; 3 down
    expectViewer({48, 12, 48, 36});
    EXPECT_EQ(moved.count(), 1);
    drag({60, 20}, {63, 53}); // the border stays; down by 6 of 33
    expectViewer({48, 18, 48, 36});
    drag({60, 30}, {1, 1});
    expectViewer({0, 0, 48, 36});
    // A move that changes nothing is told all the same.
    drag({10, 10}, {5, 5});
    expectViewer({0, 0, 48, 36});
    EXPECT_EQ(moved.count(), 4);
    EXPECT_EQ(moved[3][0].toPointF(), QPointF(24 * 20, 36 * 20));
    expectPosition(24 * 16.66667, -9 * 16.66667);
}

TEST_F(CanvasViewerWidgetTest, KeepsFractionsOfItsPositionWhileDragged)
{
    application.getRvKpConfig()->setKpSize(1000.0F, 333.0F);
    zoom(2.7F);
    map->setCenter(); // 35.56 wide, at 30.22
    const QRectF before = viewer().rectF();
    ASSERT_NE(before.x(), static_cast<int>(before.x()));
    const QPoint inside = viewer().pos() + QPoint(5, 3);
    press(inside);
    move(inside + QPoint(7, 0));
    move(inside + QPoint(11, 0));
    release(inside + QPoint(11, 0));
    // The widget stands on whole px; the fractions are neither lost nor gathered.
    expectViewer(before.translated(11, 0));
}

TEST_F(CanvasViewerWidgetTest, ADragWithAnotherButtonSwitchesGesturesButMovesNothing)
{
    zoom(2.0F);
    QSignalSpy moved(map.get(), &CanvasViewerWidget::sigMoved);
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        calls("enableGesture");
        press({34, 19}, button);
        EXPECT_EQ(calls("enableGesture"), Calls{"false"});
        move({44, 19});
        EXPECT_EQ(calls("enableGesture"), Calls{});
        release({44, 19}, button);
        EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    }
    expectViewer({24, 9, 48, 36});
    EXPECT_EQ(moved.count(), 0);
}

TEST_F(CanvasViewerWidgetTest, GesturesAreOffWhileTheViewerIsDragged)
{
    zoom(2.0F);
    calls("enableGesture");
    press({34, 19});
    EXPECT_EQ(calls("enableGesture"), Calls{"false"});
    move({35, 19});
    release({35, 19});
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
}

TEST_F(CanvasViewerWidgetTest, TheReleaseOfAnyButtonEndsTheDrag)
{
    zoom(2.0F);
    send(viewer(), QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    send(viewer(), QEvent::MouseMove, {11, 10}, Qt::NoButton, Qt::LeftButton);
    expectViewer({25, 9, 48, 36});
    send(viewer(), QEvent::MouseButtonRelease, {10, 10}, Qt::RightButton, Qt::LeftButton);
    send(viewer(), QEvent::MouseMove, {15, 10}, Qt::NoButton, Qt::LeftButton);
    expectViewer({25, 9, 48, 36});
    EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
}

TEST_F(CanvasViewerWidgetTest, TheMapItselfIgnoresThePointer)
{
    zoom(2.0F);
    QSignalSpy moved(map.get(), &CanvasViewerWidget::sigMoved);
    send(*map, QEvent::MouseMove, {4, 4}, Qt::NoButton, Qt::LeftButton);
    drag({4, 4}, {14, 8});
    expectViewer({24, 9, 48, 36});
    EXPECT_EQ(moved.count(), 0);
    EXPECT_EQ(calls("enableGesture"), Calls{});
}

TEST_F(CanvasViewerWidgetTest, ShowsItsCursorWhileThePointerIsOverTheViewer)
{
    zoom(2.0F);
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&viewer(), &enter);
    EXPECT_TRUE(viewer().testAttribute(Qt::WA_SetCursor));
    EXPECT_EQ(viewer().cursor().shape(), Qt::OpenHandCursor);
    QCoreApplication::sendEvent(&viewer(), &leave);
    EXPECT_FALSE(viewer().testAttribute(Qt::WA_SetCursor));

    map->setEnterCursor(Qt::CrossCursor);
    EXPECT_FALSE(viewer().testAttribute(Qt::WA_SetCursor));
    QCoreApplication::sendEvent(&viewer(), &enter);
    EXPECT_EQ(viewer().cursor().shape(), Qt::CrossCursor);
}

TEST_F(CanvasViewerWidgetTest, AnUnzoomedCanvasAlwaysHasACentredViewer)
{
    zoom(2.0F);
    drag({34, 19}, {14, 12});
    expectViewer({4, 2, 48, 36});
    zoom(1.0F);
    expectViewer({0, 0, 96, 54});
    zoom(2.0F);
    drag({34, 19}, {14, 12});
    zoom(0.5F);
    expectViewer({-48, 0, 192, 54}); // (96 - 192) / 2
    expectPosition(0, 0);
}

TEST_F(CanvasViewerWidgetTest, AZoomedCanvasKeepsTheViewersCentre)
{
    zoom(4.0F);
    drag({48, 27}, {38, 25});
    expectViewer({26, 16, 24, 18});
    zoom(3.0F);
    expectViewer({22, 13, 32, 24});
    zoom(1.5F); // 64 x 48 around (38, 25)
    expectViewer({6, 1, 64, 48});
    zoom(1.2F); // 80 x 54 around (38, 25) would begin at (-2, -2)
    expectViewer({0, 0, 80, 54});
}

TEST_F(CanvasViewerWidgetTest, CentresWhenAskedTo)
{
    zoom(2.0F);
    drag({34, 19}, {14, 12});
    map->setCenter();
    expectViewer({24, 9, 48, 36});
    expectPosition(0, 0);
}

TEST_F(CanvasViewerWidgetTest, HidingCentresAtOnce)
{
    zoom(2.0F);
    drag({34, 19}, {14, 12});
    map->hide();
    EXPECT_FALSE(map->isVisible());
    EXPECT_TRUE(viewer().isHidden());
    expectViewer({24, 9, 48, 36});
    expectPosition(0, 0);
    map->show();
    EXPECT_TRUE(map->isVisible());
    EXPECT_TRUE(viewer().isVisible());
    expectViewer({24, 9, 48, 36});
}

TEST_F(CanvasViewerWidgetTest, ShowingLaysOut)
{
    zoom(2.0F);
    drag({34, 19}, {14, 12});
    application.setCanvasScale(4.0F);
    calls("setCanvasPosition");
    map->show();
    expectViewer({16, 11, 24, 18}); // around (28, 20)
    EXPECT_EQ(calls("setCanvasPosition").size(), 1U);
}

TEST_F(CanvasViewerWidgetTest, ShowsAPointOfTheCanvasInTheMiddleOfTheView)
{
    QSignalSpy moved(map.get(), &CanvasViewerWidget::sigMoved);
    map->setCenter({0.75, 0.5}, 4.0F);
    EXPECT_EQ(application.getCanvasScale(), 4.0F);
    // A canvas px is 4 x 800 / 1920 = 1.66667 view px, a map px 4 x 800 / 96 = 33.3333. The point
    // (1440, 540) was seen at (400 + 480 x 1.66667, 300) = (1200, 300). The centre of the view of
    // 800 x 600 is that of whole px, (399, 299): the viewer of 24 x 18 goes from (36, 18) by
    // (801, 1) / 33.3333.
    expectViewer({36 + 24.03, 18 + 0.03, 24, 18});
    expectPosition(-801, 1);
    const QPointF seen = application.convertCanvasToView({1440, 540});
    EXPECT_NEAR(seen.x(), 399, 1e-2);
    EXPECT_NEAR(seen.y(), 299, 1e-2);
    EXPECT_EQ(moved.count(), 0);
}

TEST_F(CanvasViewerWidgetTest, TheFractionsOfAPointGoUpward)
{
    map->setCenter({0.5, 0.75}, 4.0F);
    // (960, 810) was seen at (400, 300 - 270 x 1.66667 = -150): (1, -449) / 33.3333.
    expectViewer({36 + 0.03, 18 - 13.47, 24, 18});
    EXPECT_NEAR(application.convertCanvasToView({960, 810}).y(), 299, 1e-2);
}

TEST_F(CanvasViewerWidgetTest, APointNearTheBorderIsShownAsFarAsTheMapAllows)
{
    map->setCenter({1.0, 1.0}, 4.0F);
    expectViewer({72, 0, 24, 18});
    expectPosition(-36 * 33.33333, -18 * 33.33333);
    map->setCenter({-5.0, -5.0}, 4.0F);
    expectViewer({0, 36, 24, 18});
    map->setCenter({0.1, 0.1}, 1.0F);
    expectViewer({0, 0, 96, 54});
}

TEST_F(CanvasViewerWidgetTest, APointIsFoundFromWhereverTheViewerIs)
{
    zoom(4.0F);
    drag({48, 27}, {20, 45});
    map->setCenter({0.4, 0.6}, 3.0F);
    const QPointF seen = application.convertCanvasToView({768, 648});
    EXPECT_NEAR(seen.x(), 399, 1e-2);
    EXPECT_NEAR(seen.y(), 299, 1e-2);
}

TEST_F(CanvasViewerWidgetTest, EveryChangeOfTheScenesRectangleLaysOut)
{
    zoom(2.0F);
    calls("setCanvasPosition");
    view().resize(1600, 450);
    expectViewer({0, 13.5, 96, 27});
    EXPECT_EQ(calls("setCanvasPosition").size(), 1U);
    map.reset();
    view().resize(800, 600);
    EXPECT_EQ(calls("setCanvasPosition"), Calls{});
}

TEST_F(CanvasViewerWidgetTest, UpdateRepaintsMapAndViewer)
{
    zoom(2.0F);
    PaintCount ofMap(*map);
    PaintCount ofViewer(viewer());
    map->update();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ofMap.count() > 0 && ofViewer.count() > 0; }));
}

TEST_F(CanvasViewerWidgetTest, AnotherStyleShowsAtOnce)
{
    zoom(2.0F);
    PaintCount ofMap(*map);
    EXPECT_TRUE(ofMap.isRaisedBy([this] { map->setCanvasWidgetStyle(Qt::red, 1.0); }));
    PaintCount ofViewer(viewer());
    EXPECT_TRUE(ofViewer.isRaisedBy([this] { map->setViewerWidgetStyle(Qt::green, 1.0); }));
}

TEST_F(CanvasViewerWidgetTest, PaintsMapAndViewerInTheirStyles)
{
    zoom(2.0F);
    const auto expectPainted = [&](QWidget& widget, const QBrush& brush, double opacity) {
        QImage expected(widget.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::transparent);
        {
            QPainter painter(&expected);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setBrush(brush);
            painter.setOpacity(opacity);
            painter.drawRect(widget.rect());
        }
        QImage painted(widget.size(), QImage::Format_ARGB32_Premultiplied);
        painted.fill(Qt::transparent);
        widget.render(&painted, {}, {}, {});
        EXPECT_EQ(painted, expected);
    };
    // White at 128 / 255 of 0.5, blue likewise, with the painter's own thin black border.
    expectPainted(*map, QColor(255, 255, 255, 128), 0.5);
    expectPainted(viewer(), QColor(0, 0, 255, 128), 0.5);
    map->setCanvasWidgetStyle(Qt::red, 0.25);
    map->setViewerWidgetStyle(QBrush(Qt::green, Qt::Dense4Pattern), 1.0);
    expectPainted(*map, Qt::red, 0.25);
    expectPainted(viewer(), QBrush(Qt::green, Qt::Dense4Pattern), 1.0);
}
