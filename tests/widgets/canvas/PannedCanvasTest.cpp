// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/support/ShownEditor.h"

#include <norvel/widgets/canvas/CanvasViewer.h>
#include <norvel/widgets/canvas/CanvasViewerWidget.h>
#include <norvel/widgets/canvas/ViewerWidget.h>

#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPainter>

#include <array>
#include <cmath>

using namespace norvel;

namespace {

constexpr int columns = 8;
constexpr int rows = 6;

/// The colour of a cell of the picture; no two cells are alike.
QRgb cellColor(int column, int row)
{
    return qRgb(20 + column * 30, 20 + row * 40, (column + row) % 2 ? 60 : 200);
}

/// A picture of 1920 x 1080 in cells of 240 x 180.
QImage cells()
{
    QImage image(1920, 1080, QImage::Format_RGB32);
    QPainter painter(&image);
    for (int column = 0; column < columns; ++column) {
        for (int row = 0; row < rows; ++row)
            painter.fillRect(column * 240, row * 180, 240, 180, QColor(cellColor(column, row)));
    }
    return image;
}

bool alike(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) <= 3 && std::abs(qGreen(a) - qGreen(b)) <= 3 &&
           std::abs(qBlue(a) - qBlue(b)) <= 3;
}

/// A canvas that shows a picture of cells, and a map of 96 x 54 over it, whose px are 20 canvas px
/// each.
class PannedCanvasTest : public ShownEditor
{
protected:
    void SetUp() override
    {
        ShownEditor::SetUp();
        if (!HasFatalFailure())
            m_sprite = showPicture(cells());
    }
    void TearDown() override
    {
        m_sprite.reset();
        ShownEditor::TearDown();
    }

    /// The number of points, of a grid over the view, at which another cell is seen than the one
    /// that the viewer's place on the map tells; -1 when too few could be judged.
    int wrongPoints(const QRectF& viewerOnMap, float scale)
    {
        const QImage image = grabbed();
        const double zoom = static_cast<double>(scale) * 800.0 / 1920.0;
        int judged = 0;
        int wrong = 0;
        for (int x = 210; x < 800; x += 53) {
            for (int y = 15; y < 600; y += 41) {
                // y down on both
                const double canvasX = viewerOnMap.center().x() * 20.0 + (x + 0.5 - 400) / zoom;
                const double canvasY = viewerOnMap.center().y() * 20.0 + (y + 0.5 - 300) / zoom;
                const double inCellX = std::fmod(canvasX, 240.0);
                const double inCellY = std::fmod(canvasY, 180.0);
                const bool nearBorder =
                    inCellX < 12 || inCellX > 228 || inCellY < 12 || inCellY > 168;
                if (canvasX < 0 || canvasX >= 1920 || canvasY < 0 || canvasY >= 1080 || nearBorder)
                    continue;
                ++judged;
                const QRgb expected =
                    cellColor(static_cast<int>(canvasX / 240), static_cast<int>(canvasY / 180));
                wrong += alike(image.pixel(x, y), expected) ? 0 : 1;
            }
        }
        return judged > 40 ? wrong : -1;
    }

    void expectSeen(const QRectF& viewerOnMap, float scale)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return wrongPoints(viewerOnMap, scale) == 0; }, 10000))
            << wrongPoints(viewerOnMap, scale) << " points at scale " << scale << ", viewer at "
            << viewerOnMap.x() << ", " << viewerOnMap.y();
    }

    QRectF viewerItemRect()
    {
        for (const QGraphicsItem* item : view().scene()->items()) {
            if (item->type() == QGraphicsItem::UserType + 1)
                return dynamic_cast<const QGraphicsRectItem*>(item)->rect();
        }
        ADD_FAILURE() << "no viewer";
        return {};
    }

private:
    FrameworkRef<qrvkp::RvSpriteTrack> m_sprite;
};

const std::array<QPoint, 4> corners{QPoint(8, 6), QPoint(-14, 8), QPoint(3, -11), QPoint(-6, -5)};

} // namespace

TEST_F(PannedCanvasTest, TheViewShowsWhatTheViewerItemCovers)
{
    CanvasViewer viewer(&application);
    for (const float scale : {1.0F, 2.0F, 3.5F}) {
        application.setCanvasScale(scale);
        viewer.setCenter();
        viewer.update();
        expectSeen(viewerItemRect(), scale);
        for (const QPoint& step : corners) {
            const QRectF before = viewerItemRect();
            const QPoint handle = before.center().toPoint();
            drag(handle, handle + step);
            if (scale > 3.0F) {
                EXPECT_EQ(viewerItemRect(), before.translated(step));
            }
            expectSeen(viewerItemRect(), scale);
        }
    }
}

TEST_F(PannedCanvasTest, TheViewShowsWhatTheViewerWidgetCovers)
{
    CanvasViewerWidget map(&application, window.get());
    map.show();
    const ViewerWidget& viewer = *map.findChild<ViewerWidget*>();
    for (const float scale : {1.0F, 2.0F, 3.5F}) {
        application.setCanvasScale(scale);
        map.setCenter();
        expectSeen(viewer.rectF(), scale);
        for (const QPoint& step : corners) {
            const QRectF before = viewer.rectF();
            const QPoint handle = before.center().toPoint();
            drag(handle, handle + step);
            if (scale > 3.0F) {
                EXPECT_EQ(viewer.rectF(), before.translated(step));
            }
            expectSeen(viewer.rectF(), scale);
        }
    }
}

TEST_F(PannedCanvasTest, ThePointThatTheWidgetTellsIsSeenInMidView)
{
    CanvasViewerWidget map(&application, window.get());
    map.show();
    application.setCanvasScale(5.0F);
    map.update();
    QPointF told;
    QObject::connect(&map, &CanvasViewerWidget::sigMoved, &map,
                     [&told](const QPointF& point) { told = point; });
    drag({48, 27}, {66, 40});
    // (66, 40) on the map: (1320, 1080 - 800). That is in the cell 5, 4.
    EXPECT_EQ(told, QPointF(1320, 280));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return alike(grabbed().pixel(400, 300), cellColor(5, 4)); }, 10000));
}

TEST_F(PannedCanvasTest, CentringOnAPointShowsIt)
{
    CanvasViewerWidget map(&application, window.get());
    map.show();
    // Columns from the left, rows from the bottom: (0.3125, 0.75) is in the cell 2, row 1 of 6.
    map.setCenter({0.3125, 0.75}, 6.0F);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return alike(grabbed().pixel(399, 299), cellColor(2, 1)); }, 10000));
}

TEST_F(PannedCanvasTest, AViewOfAnotherSizeShowsWhatTheViewerCovers)
{
    CanvasViewer viewer(&application);
    application.setCanvasScale(2.5F);
    viewer.update();
    drag({48, 27}, {40, 30});
    view().resize(800, 500);
    const QRectF rect = viewerItemRect();
    const QPointF middle = application.convertViewToCanvas({400, 250});
    EXPECT_NEAR(middle.x(), rect.center().x() * 20, 1e-2);
    EXPECT_NEAR(middle.y(), 1080 - rect.center().y() * 20, 1e-2);
}
