// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/support/ShownEditor.h"

#include <norvel/widgets/canvas/CanvasViewer.h>
#include <norvel/widgets/canvas/CanvasViewerWidget.h>
#include <norvel/widgets/canvas/ViewerWidget.h>

#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPointer>

#include <cmath>
#include <limits>

using namespace norvel;

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float quietNan = std::numeric_limits<float>::quiet_NaN();

bool isFinite(const QRectF& rect)
{
    return std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width()) &&
           std::isfinite(rect.height());
}

/// Both maps, with what makes no sense.
class MapBadInputTest : public ShownEditor
{
protected:
    void SetUp() override
    {
        ShownEditor::SetUp();
        if (HasFatalFailure())
            return;
        item = std::make_unique<CanvasViewer>(&application);
        item->setPos({300, 300});
        widget = new CanvasViewerWidget(&application, window.get());
        widget->show();
    }
    void TearDown() override
    {
        item.reset();
        ShownEditor::TearDown();
    }

    void useBoth()
    {
        item->update();
        widget->update();
        widget->setCenter({0.3, 0.7}, 2.0F);
        drag({340, 320}, {350, 325});
        drag({10, 10}, {12, 12});
        EXPECT_TRUE(isFinite(widget->rectF()));
        EXPECT_TRUE(isFinite(widget->findChild<ViewerWidget*>()->rectF()));
        EXPECT_TRUE(std::isfinite(application.getCanvasPosition().x()));
        EXPECT_TRUE(std::isfinite(application.getCanvasPosition().y()));
        grabbedWindow();
    }

    QRectF viewerItemRect()
    {
        for (const QGraphicsItem* part : view().scene()->items()) {
            if (part->type() == QGraphicsItem::UserType + 1)
                return dynamic_cast<const QGraphicsRectItem*>(part)->rect();
        }
        return {};
    }

    std::unique_ptr<CanvasViewer> item;
    CanvasViewerWidget* widget = nullptr; ///< belongs to the window
};

} // namespace

TEST_F(MapBadInputTest, ACanvasWithoutASensibleSizeHasNoMap)
{
    for (const float side : {0.0F, -5.0F, infinite, quietNan}) {
        application.getRvKpConfig()->setKpSize(side, side);
        useBoth();
        application.getRvKpConfig()->setKpSize(side, 1080.0F);
        useBoth();
        application.getRvKpConfig()->setKpSize(1920.0F, side);
        useBoth();
    }
    application.getRvKpConfig()->setKpSize(0.0F, 0.0F);
    useBoth();
    EXPECT_EQ(widget->size(), QSize(0, 0));
    application.getRvKpConfig()->setKpSize(1920.0F, 1080.0F);
    useBoth();
    EXPECT_EQ(widget->size(), QSize(96, 54));
}

TEST_F(MapBadInputTest, ExtremeCanvasesAreBorne)
{
    for (const float side : {1e-30F, 1e-3F, 1e9F, 1e30F}) {
        application.getRvKpConfig()->setKpSize(side, 100.0F);
        useBoth();
        application.getRvKpConfig()->setKpSize(100.0F, side);
        useBoth();
    }
}

TEST_F(MapBadInputTest, LengthsThatMakeNoSenseGiveAnEmptyMap)
{
    for (const int length : {0, -1, -96, std::numeric_limits<int>::min()}) {
        item->setCanvasItemMaxSideLength(length);
        widget->setMaxSideLength(length);
        useBoth();
        EXPECT_EQ(widget->size(), QSize(0, 0));
    }
}

TEST_F(MapBadInputTest, HugeLengthsAreBorne)
{
    for (const int length : {100000, std::numeric_limits<int>::max()}) {
        item->setCanvasItemMaxSideLength(length);
        widget->setMaxSideLength(length);
        useBoth();
        EXPECT_GE(widget->width(), 100000);
    }
}

TEST_F(MapBadInputTest, ExtremeScalesAreBorne)
{
    for (const float scale : {1e-38F, 1e-6F, 1e6F, 1e38F}) {
        application.setCanvasScale(scale);
        item->update();
        widget->update();
        drag({340, 320}, {350, 325});
        drag({10, 10}, {12, 12});
        grabbedWindow();
        EXPECT_EQ(widget->size(), QSize(96, 54));
        // Nothing of it stays.
        application.setCanvasScale(2.0F);
        item->update();
        EXPECT_TRUE(QRectF(300, 300, 96, 54).contains(viewerItemRect())) << scale;
        EXPECT_EQ(viewerItemRect().size(), QSizeF(48, 36)) << scale;
    }
    for (const float scale : {0.0F, -1.0F, infinite, quietNan}) {
        application.setCanvasScale(1.0F);
        widget->setCenter({0.5, 0.5}, scale);
        EXPECT_EQ(application.getCanvasScale(), 1.0F);
    }
}

TEST_F(MapBadInputTest, APointThatIsNoneLeavesTheViewerOnTheMap)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    for (const double value : {nan, inf, -inf, 1e300, -1e300}) {
        widget->setCenter({value, 0.5}, 3.0F);
        widget->setCenter({0.5, value}, 3.0F);
        widget->setCenter({value, value}, 3.0F);
        const QRectF rect = widget->findChild<ViewerWidget*>()->rectF();
        EXPECT_TRUE(widget->rectF().contains(rect))
            << value << ": " << rect.x() << ", " << rect.y();
    }
}

TEST_F(MapBadInputTest, AViewWithoutAnAreaIsBorne)
{
    for (const QSize& size : {QSize(0, 600), QSize(800, 0), QSize(0, 0), QSize(1, 1)}) {
        view().resize(size);
        useBoth();
    }
    view().resize(800, 600);
    useBoth();
}

TEST_F(MapBadInputTest, AClearedSceneTakesTheMapItemWithIt)
{
    item->update();
    view().scene()->clear();
    widget->hide();
    delete widget; // which would pan, too
    calls("");
    item->update();
    item->setCanvasItemStyle(Qt::red, QPen());
    item->setViewerItemStyle(Qt::red, QPen());
    item->show();
    item->hide();
    item->setCenter();
    view().resize(500, 500);
    item.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(calls("setCanvasPosition"), std::vector<std::string>{});
    EXPECT_EQ(viewerItemRect(), QRectF());
    grabbedWindow();
}

TEST_F(MapBadInputTest, AViewThatGoesTakesTheMapItemWithIt)
{
    item->update();
    delete application.getGraphicsView();
    item->update();
    item->show();
    widget->update(); // goes by the new view
    EXPECT_EQ(widget->size(), QSize(96, 54));
    item.reset();
}

TEST_F(MapBadInputTest, AWindowThatGoesTakesViewAndMapWithIt)
{
    item->update();
    window.reset();
    calls("");
    item->update();
    item.reset();
    EXPECT_EQ(calls("setCanvasPosition"), std::vector<std::string>{});
    window = std::make_unique<QWidget>();
}

TEST_F(MapBadInputTest, AMapOverTheViewItselfGoesWithIt)
{
    auto* over = new CanvasViewerWidget(&application, &view());
    over->show();
    EXPECT_EQ(over->size(), QSize(96, 54));
    const QPointer<QWidget> watched(over);
    delete application.getGraphicsView();
    EXPECT_FALSE(watched);
}

TEST_F(MapBadInputTest, AMapWithoutAParentIsAWindow)
{
    CanvasViewerWidget alone(&application, nullptr);
    alone.update();
    EXPECT_EQ(alone.size(), QSize(96, 54));
    EXPECT_EQ(alone.grab().size(), QSize(96, 54));
    alone.setCenter({0.2, 0.2}, 3.0F);
    alone.hide();
}

TEST_F(MapBadInputTest, WithoutAnApplicationTheMapsAreEmpty)
{
    CanvasViewer lostItem(nullptr);
    lostItem.show();
    lostItem.setCenter();
    lostItem.update();
    lostItem.hide();
    CanvasViewerWidget lost(nullptr, window.get());
    lost.show();
    lost.setCenter();
    lost.setCenter({0.5, 0.5}, 2.0F);
    lost.update();
    QWidget& viewer = *lost.findChild<ViewerWidget*>();
    send(viewer, QEvent::MouseButtonPress, {1, 1}, Qt::LeftButton, Qt::LeftButton);
    send(viewer, QEvent::MouseMove, {2, 2}, Qt::NoButton, Qt::LeftButton);
    send(viewer, QEvent::MouseButtonRelease, {2, 2}, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(lost.size(), QSize(0, 0));
    lost.hide();
}

TEST_F(MapBadInputTest, AMapWithoutItsViewerDoesTheRest)
{
    delete widget->findChild<ViewerWidget*>();
    widget->show();
    widget->update();
    widget->setViewerWidgetStyle(Qt::red, 1.0);
    widget->setEnterCursor(Qt::CrossCursor);
    widget->setCenter();
    widget->setCenter({0.5, 0.5}, 2.0F);
    EXPECT_EQ(widget->size(), QSize(96, 54));
    widget->hide();
}
