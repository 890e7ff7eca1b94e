// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/mask/MaskedTrack.h"
#include "widgets/mask/PaintedStroke.h"

#include <norvel/widgets/mask/LabPaintMaskView.h>
#include <norvel/widgets/mask/LabTouchMaskView.h>

#include <QPointer>

#include <cstdlib>
#include <limits>

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float quietNan = std::numeric_limits<float>::quiet_NaN();

using TrackMaskBadInputTest = MaskedTrack;

/// The two views over a widget of the editor's window.
class PaintBadInputTest : public ShownEditor
{
protected:
    template <class View>
    static void useMouse(View& view)
    {
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            send(view, QEvent::MouseButtonPress, {10, 10}, button, button);
            send(view, QEvent::MouseMove, {60, 20}, Qt::NoButton, button);
            send(view, QEvent::MouseMove, {20, 60}, Qt::NoButton, button);
            send(view, QEvent::MouseButtonRelease, {30, 30}, button, Qt::NoButton);
        }
        view.grab();
    }
};

} // namespace

TEST_F(TrackMaskBadInputTest, WithoutATrackNothingIsPainted)
{
    mask->setTrack(nullptr);
    const QRect before = mask->geometry();
    mask->updateGeometry();
    mask->clear();
    EXPECT_EQ(mask->geometry(), before);
    stroke({50, 50}, {100, 50});
    EXPECT_EQ(maskedPixels(), 0);
    EXPECT_EQ(calls("enableGesture"), (std::vector<std::string>{"false", "true"}));
    mask->undo();
    mask->redo();
    EXPECT_EQ(mask->viewPos2PixmapPos({3, 4}), QPointF(3, 4));
}

TEST_F(TrackMaskBadInputTest, ATrackWithoutASensibleSizeHasNoPixels)
{
    for (const float side : {0.0F, -10.0F, quietNan, 0.5F}) {
        for (const QSizeF& size : {QSizeF(side, 200), QSizeF(400, side), QSizeF(side, side)}) {
            track->setWidthAndHeight(static_cast<float>(size.width()),
                                     static_cast<float>(size.height()));
            mask->updateGeometry();
            stroke({5, 5}, {9, 9});
            mask->clear();
            stroke({5, 5}, {9, 9});
            mask->undo();
            EXPECT_TRUE(maskImage().isNull()) << side;
        }
    }
    track->setWidthAndHeight(400.0F, 200.0F);
    mask->updateGeometry();
    mask->clear();
    stroke({50, 50}, {100, 50});
    EXPECT_GT(maskedPixels(), 0);
}

TEST_F(TrackMaskBadInputTest, ATrackWithoutASizeIsBorneFromTheBeginning)
{
    track->setWidthAndHeight(0.0F, 0.0F);
    OpenMaskWidget fresh(&application, window.get());
    fresh.setTrack(track.get());
    fresh.updateGeometry();
    EXPECT_EQ(fresh.size(), QSize(0, 0));
    EXPECT_EQ(fresh.getMaskImage(), nullptr);
}

TEST_F(TrackMaskBadInputTest, AHugeTrackHasNoPixelsRatherThanAllMemory)
{
    for (const float side : {40000.0F, 1e9F, 1e30F, infinite}) {
        track->setWidthAndHeight(side, side);
        application.setCanvasScale(1.0F);
        mask->updateGeometry();
        EXPECT_TRUE(maskImage().isNull()) << side;
        send(*mask, QEvent::MouseButtonPress, {5, 5}, Qt::LeftButton, Qt::LeftButton);
        send(*mask, QEvent::MouseButtonRelease, {9, 9}, Qt::LeftButton, Qt::NoButton);
    }
    track->setWidthAndHeight(30000.0F, 10.0F);
    mask->updateGeometry();
    EXPECT_EQ(maskImage().size(), QSize(30000, 10));
    EXPECT_EQ(mask->size(), QSize(15000, 5)); // a canvas px is half a view px
}

TEST_F(TrackMaskBadInputTest, PlacementsThatMakeNoSenseAreBorne)
{
    for (const float value : {0.0F, -1.0F, quietNan, infinite, 1e30F, 1e-30F}) {
        track->setScale(value);
        track->setRotation(value);
        mask->updateGeometry();
        stroke({5, 5}, {9, 9});
        track->setPosition(value, value);
        mask->updateGeometry();
        stroke({5, 5}, {9, 9});
        EXPECT_LE(std::abs(mask->x()), 1000000) << value;
        EXPECT_LE(std::abs(mask->y()), 1000000) << value;
        EXPECT_EQ(maskImage().size(), QSize(400, 200));
    }
}

TEST_F(TrackMaskBadInputTest, ATrackThatIsTurnedUpsideDownHasAWidgetWithoutAnArea)
{
    track->setRotation(180.0F);
    mask->updateGeometry();
    EXPECT_EQ(mask->size(), QSize(0, 0));
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(TrackMaskBadInputTest, WidthsThatAreNoneAreBorne)
{
    for (const int width : {0, -1, -1000, std::numeric_limits<int>::min()}) {
        for (const auto tool : {DrawToolPen, DrawToolEraser}) {
            mask->setDrawTool(tool);
            mask->setPenWidth(width);
            mask->setEraserWidth(width);
            EXPECT_TRUE(mask->cursor().pixmap().isNull());
            for (const float scale : {0.75F, 2.0F, 4.0F}) {
                placeAt(scale);
                mask->clear();
                stroke({5, 5}, {60, 9});
                EXPECT_EQ(maskedPixels() > 0, tool == DrawToolPen) << width; // a thin line
            }
        }
    }
}

TEST_F(TrackMaskBadInputTest, HugeWidthsAreBorne)
{
    for (const int width : {5000, 1000000, std::numeric_limits<int>::max()}) {
        mask->setPenWidth(width);
        mask->setEraserWidth(width);
        EXPECT_TRUE(mask->cursor().pixmap().isNull());
        for (const float scale : {0.75F, 2.0F}) {
            placeAt(scale);
            stroke({5, 5}, {60, 9});
        }
        EXPECT_EQ(maskImage().pixelColor(200, 100), QColor(Qt::white)) << width;
    }
    mask->setPenWidth(1000);
    EXPECT_EQ(mask->cursor().pixmap().size(), QSize(1000, 1000));
}

TEST_F(TrackMaskBadInputTest, ColoursAndOpacitiesThatAreNoneAreBorne)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [opacity, alpha] : {std::pair(-1.0, 0), std::pair(0.0, 0), std::pair(7.0, 255),
                                         std::pair(1e300, 255), std::pair(nan, 0)}) {
        mask->setPenColorAndOpacity(QColor(), opacity);
        mask->setPenWidth(20);
        mask->clear();
        stroke({5, 5}, {60, 9});
        EXPECT_EQ(shown(*mask).pixelColor(30, 7), QColor(0, 0, 0, alpha)) << opacity;
        EXPECT_EQ(maskedPixels(), 0); // no colour is black
    }
}

TEST_F(TrackMaskBadInputTest, ACanvasWithoutAnAreaIsBorne)
{
    for (const float side : {0.0F, -1.0F, quietNan}) {
        application.getRvKpConfig()->setKpSize(side, side);
        mask->updateGeometry();
        EXPECT_EQ(mask->size(), QSize(0, 0));
        send(*mask, QEvent::MouseButtonPress, {5, 5}, Qt::LeftButton, Qt::LeftButton);
        send(*mask, QEvent::MouseButtonRelease, {9, 9}, Qt::LeftButton, Qt::NoButton);
        EXPECT_EQ(maskImage().size(), QSize(400, 200));
    }
}

TEST_F(TrackMaskBadInputTest, AViewThatGoesIsBorne)
{
    delete application.getGraphicsView();
    mask->updateGeometry();
    stroke({5, 5}, {60, 9});
    EXPECT_EQ(maskImage().size(), QSize(400, 200));
}

TEST_F(TrackMaskBadInputTest, WithoutAnApplicationPointsAreThoseOfTheWidget)
{
    OpenMaskWidget lost(nullptr, window.get());
    lost.setTrack(track.get());
    lost.updateGeometry();
    EXPECT_EQ(lost.getMaskImage(), nullptr);
    lost.clear();
    lost.resize(400, 200);
    EXPECT_EQ(lost.viewPos2PixmapPos({3, 4}), QPointF(3, 4));
    send(lost, QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    send(lost, QEvent::MouseMove, {90, 10}, Qt::NoButton, Qt::LeftButton);
    send(lost, QEvent::MouseButtonRelease, {90, 10}, Qt::LeftButton, Qt::NoButton);
    lost.grab();
    const std::unique_ptr<QImage> image(lost.getMaskImage());
    ASSERT_TRUE(image);
    const std::unique_ptr<const uchar[]> pixels(image->constBits());
    EXPECT_EQ(image->pixelColor(50, 10), QColor(Qt::white));
}

TEST_F(TrackMaskBadInputTest, GoesWithItsParent)
{
    auto* parent = new QWidget(window.get());
    const QPointer<QWidget> child(new OpenMaskWidget(&application, parent));
    delete parent;
    EXPECT_FALSE(child);
}

TEST_F(TrackMaskBadInputTest, WithoutAParentItIsAWindow)
{
    OpenMaskWidget alone(&application, nullptr);
    alone.setTrack(track.get());
    alone.updateGeometry();
    EXPECT_EQ(alone.grab().size(), QSize(400, 200));
}

TEST_F(PaintBadInputTest, WithoutAParentTheViewsKeepTheirSizes)
{
    LabPaintMaskView paint(nullptr);
    paint.paintMode = true;
    paint.resize(100, 80);
    paint.setupPaintShowRect({0, 0, 100, 80}, {0, 0, 100, 80});
    useMouse(paint);
    EXPECT_EQ(paint.size(), QSize(100, 80));
    EXPECT_EQ(paint.lastPaintBlurMaskImage(1.0F, false).size(), QSize(100, 80));
    LabTouchMaskView touch(nullptr);
    touch.touchImage = QImage(4, 4, QImage::Format_RGB32);
    touch.resize(100, 80);
    useMouse(touch);
    EXPECT_EQ(touch.size(), QSize(100, 80));
}

TEST_F(PaintBadInputTest, TheViewsGoWithTheirParents)
{
    auto* parent = new QWidget(window.get());
    const QPointer<QWidget> paint(new LabPaintMaskView(parent));
    const QPointer<QWidget> touch(new LabTouchMaskView(parent));
    delete parent;
    EXPECT_FALSE(paint);
    EXPECT_FALSE(touch);
}

TEST_F(PaintBadInputTest, AParentWithoutAnAreaIsBorne)
{
    QWidget parent(window.get());
    parent.resize(0, 0);
    LabPaintMaskView paint(&parent);
    paint.paintMode = true;
    LabTouchMaskView touch(&parent);
    parent.show();
    useMouse(paint);
    useMouse(touch);
    EXPECT_EQ(paint.size(), QSize(0, 0));
    EXPECT_EQ(touch.size(), QSize(0, 0));
    EXPECT_TRUE(paint.lastPaintBlurMaskImage(1.0F, false).isNull());
}

TEST_F(PaintBadInputTest, RectanglesThatMakeNoSenseAreBorne)
{
    QWidget parent(window.get());
    parent.resize(200, 100);
    LabPaintMaskView paint(&parent);
    paint.paintMode = true;
    const int largest = std::numeric_limits<int>::max();
    const QSize none(0, 0);
    const std::vector<std::pair<QRect, QSize>> paintings{
        {QRect(), paint.parentWidget()->size()}, // no rectangle: all of the view
        {QRect(10, 10, 0, 50), none},
        {QRect(10, 10, 50, 0), none},
        {QRect(10, 10, -50, -20), none},
        {QRect(-500, -500, 100, 100), QSize(100, 100)},
        {QRect(0, 0, 100000, 100000), none},
        {QRect(0, 0, largest, largest), none}};
    for (const auto& [rect, size] : paintings) {
        paint.setupPaintShowRect(rect, rect);
        useMouse(paint);
        EXPECT_EQ(paint.lastPaintBlurMaskImage(1.0F, false).size(), size) << rect.width();
        useMouse(paint);
        EXPECT_EQ(paint.showFaceRect(), rect);
    }
}

TEST_F(PaintBadInputTest, WidthsAlphasAndBlursThatMakeNoSenseAreBorne)
{
    QWidget parent(window.get());
    parent.resize(200, 100);
    LabPaintMaskView paint(&parent);
    paint.paintMode = true;
    paint.setupPaintShowRect({0, 0, 200, 100}, {0, 0, 200, 100});
    for (const int width :
         {0, -1, std::numeric_limits<int>::min(), 100000, std::numeric_limits<int>::max()}) {
        paint.clearAllData();
        paint.setupPaintLineWidth(width);
        paint.setupEraserWidth(width);
        useMouse(paint);
        EXPECT_GT(shown(paint).pixelColor(10, 10).alpha(), 0) << width;
        EXPECT_EQ(shown(paint).pixelColor(180, 90).alpha() > 0, width > 0) << width;
    }
    paint.setupPaintLineWidth(10);
    for (const float value : {-1.0F, 0.0F, 1e30F, infinite, -infinite, quietNan}) {
        paint.setupPaintAlpha(value);
        useMouse(paint);
        EXPECT_EQ(paint.lastPaintBlurMaskImage(value, false).size(), QSize(200, 100)) << value;
    }
    paint.setupPaintStrokeColor(QColor());
    useMouse(paint);
}

TEST_F(PaintBadInputTest, NullPicturesAreNone)
{
    QWidget parent(window.get());
    parent.resize(200, 100);
    LabPaintMaskView paint(&parent);
    useMouse(paint); // takes the parent's size
    QImage nothing(200, 100, QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::transparent);
    paint.setupPaintMaskImagePixmap({});
    useMouse(paint);
    EXPECT_EQ(shown(paint), nothing);
    paint.setupPaintAlphaMaskImage({});
    useMouse(paint);
    EXPECT_EQ(shown(paint), nothing);
    paint.paintMode = true;
    useMouse(paint);
    EXPECT_EQ(shown(paint).pixelColor(20, 20), QColor(Qt::red)); // from (10, 10) to (30, 30)
}
