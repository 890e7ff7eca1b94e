// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ShownCanvas.h"

#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <array>
#include <memory>

using namespace qrvkp;

namespace {

/// A picture of which no two pixels nearby are alike.
QImage pattern(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, (x * 3 + y * 11) % 256));
    }
    return image;
}

/// The four quarters of a picture: top left, top right, bottom left, bottom right.
constexpr std::array<QRgb, 4> quarterColours{0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffff00};

QImage quarters(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    for (int i = 0; i < 4; ++i)
        painter.fillRect(i % 2 * width / 2, i / 2 * height / 2, width / 2, height / 2,
                         QColor(quarterColours[static_cast<std::size_t>(i)]));
    return image;
}

class CanvasViewTest : public ShownCanvas
{
protected:
    /// The pixel of the view where a canvas point is seen.
    QRgb pixelAtCanvas(const QPointF& canvasPoint)
    {
        const QPointF point = application.convertCanvasToView(canvasPoint);
        const QPoint pixel(static_cast<int>(std::floor(point.x())),
                           static_cast<int>(std::floor(point.y())));
        const QImage image = grabbed();
        EXPECT_TRUE(image.rect().contains(pixel)) << pixel.x() << ", " << pixel.y();
        return image.pixel(pixel);
    }

    /// The colours of the four quarters stand where the canvas has them: 15 canvas px off the
    /// borders between them, so that smoothing has no part in it.
    void expectQuartersAbout(const QPointF& canvasMiddle)
    {
        EXPECT_EQ(pixelAtCanvas(canvasMiddle + QPointF(-15, 15)), quarterColours[0]);
        EXPECT_EQ(pixelAtCanvas(canvasMiddle + QPointF(15, 15)), quarterColours[1]);
        EXPECT_EQ(pixelAtCanvas(canvasMiddle + QPointF(-15, -15)), quarterColours[2]);
        EXPECT_EQ(pixelAtCanvas(canvasMiddle + QPointF(15, -15)), quarterColours[3]);
    }

    const QRgb black = 0xff000000;
};

} // namespace

TEST_F(CanvasViewTest, IsMadeOnceAndPlain)
{
    QGraphicsView* plain = application.getGraphicsView();
    EXPECT_EQ(application.getGraphicsView(), plain);
    EXPECT_EQ(plain->frameShape(), QFrame::NoFrame);
    EXPECT_EQ(plain->viewport()->size(), plain->size());
    EXPECT_TRUE(plain->transform().isIdentity());
}

TEST_F(CanvasViewTest, SceneCoordinatesAreViewportPixels)
{
    for (const QSize& size : {QSize(800, 600), QSize(333, 777), QSize(1200, 200)}) {
        view().resize(size);
        application.setCanvasScale(5.0F);
        EXPECT_EQ(view().sceneRect(), QRectF(QPointF(), size));
        EXPECT_EQ(view().scene()->sceneRect(), QRectF(QPointF(), size));
        EXPECT_EQ(view().mapFromScene(QPointF(12, 34)), QPoint(12, 34));
        EXPECT_EQ(view().horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(view().verticalScrollBar()->maximum(), 0);
    }
}

TEST_F(CanvasViewTest, TheConversionsGoByTheNewSizeWhenTheSceneRectChanges)
{
    std::vector<QSizeF> dimensions;
    std::vector<QPointF> corners;
    QObject::connect(view().scene(), &QGraphicsScene::sceneRectChanged, &view(),
                     [&](const QRectF& rect) {
                         EXPECT_EQ(rect, QRectF(view().viewport()->rect()));
                         dimensions.push_back(application.getCanvasShowDimension());
                         corners.push_back(application.convertCanvasToView({0, 0}));
                     });
    view().resize(400, 800);
    view().resize(2000, 450);
    EXPECT_EQ(dimensions, (std::vector<QSizeF>{{400, 225}, {800, 450}}));
    EXPECT_EQ(corners, (std::vector<QPointF>{{0, 512.5}, {600, 450}}));
}

TEST_F(CanvasViewTest, AHiddenViewHasTheSizeItWillBeShownWith)
{
    const auto expectSize = [&](const QSize& size, const QSize& picture) {
        view().resize(size);
        EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(picture));
        EXPECT_EQ(view().wantedPictureSize(), picture);
        EXPECT_EQ(application.convertCanvasToView({0, 0}),
                  QPointF(0, (size.height() + picture.height()) / 2.0));
    };
    view().hide();
    expectSize({400, 801}, {400, 225});
    delete application.getGraphicsView();
    expectSize({320, 401}, {320, 180});

    QSignalSpy sceneRects(view().scene(), &QGraphicsScene::sceneRectChanged);
    QSignalSpy wantedSizes(&view(), &CanvasView::wantedPictureSizeChanged);
    view().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view()));
    EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(320, 180));
    EXPECT_EQ(view().scene()->sceneRect(), QRectF(0, 0, 320, 401));
    EXPECT_EQ(sceneRects.count(), 1);
    EXPECT_EQ(wantedSizes.count(), 1);
}

TEST_F(CanvasViewTest, AViewWithoutAnAreaShowsNothing)
{
    for (const QSize& size : {QSize(0, 600), QSize(800, 0), QSize(0, 0)}) {
        view().resize(size);
        EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(0, 0));
        EXPECT_EQ(application.convertCanvasToView({12, 34}),
                  QPointF(size.width() / 2.0, size.height() / 2.0));
        EXPECT_EQ(application.convertViewToCanvas({12, 34}), QPointF(800, 450));
        EXPECT_EQ(view().wantedPictureSize(), QSize(1, 1));
        grabbed();
    }
    EXPECT_EQ(view().scene()->sceneRect(), QRectF(0, 0, 800, 0));
    view().resize(800, 600);
    EXPECT_EQ(view().scene()->sceneRect(), QRectF(0, 0, 800, 600));
    EXPECT_EQ(application.convertCanvasToView({0, 0}), QPointF(0, 525));
}

TEST_F(CanvasViewTest, ShowsABlackCanvasInDarkSurroundings)
{
    const QImage image = grabbed();
    EXPECT_EQ(image.size(), QSize(800, 600));
    const QRgb surroundings = image.pixel(0, 0);
    EXPECT_NE(surroundings, black);
    EXPECT_LT(qGray(surroundings), 64);
    for (int y = 0; y < 600; ++y) {
        const bool onCanvas = y >= 75 && y < 525;
        for (const int x : {0, 1, 400, 799})
            ASSERT_EQ(image.pixel(x, y), onCanvas ? black : surroundings) << x << ", " << y;
    }
}

TEST_F(CanvasViewTest, DrawsAPictureOfTheWantedSizePixelForPixel)
{
    const QImage picture = pattern({800, 450});
    view().setPicture(picture);
    EXPECT_EQ(grabbed().copy(0, 75, 800, 450), picture);

    application.setCanvasPosition(37.0F, -21.0F);
    EXPECT_EQ(grabbed().copy(37, 96, 763, 450), picture.copy(0, 0, 763, 450));
    application.setCanvasPosition(-300.0F, 250.0F);
    EXPECT_EQ(grabbed().copy(0, 0, 500, 275), picture.copy(300, 175, 500, 275));
}

TEST_F(CanvasViewTest, DrawsPixelForPixelAlsoWhereTheCanvasDoesNotMeetThePixels)
{
    view().resize(801, 613);
    application.setCanvasScale(0.77F);
    for (const float position : {-1.0F, -0.5F, 0.0F, 0.3F, 0.5F, 1.0F}) {
        application.setCanvasPosition(position, -position);
        const QSize size = view().wantedPictureSize();
        EXPECT_EQ(size, QSize(617, 347)); // 801 x 450.5625, times 0.77
        const QImage picture = pattern(size);
        view().setPicture(picture);
        const QImage image = grabbed();
        const QPointF corner = application.convertCanvasToView({0, 900});
        int exact = 0;
        for (const int dx : {-1, 0, 1}) {
            for (const int dy : {-1, 0, 1}) {
                const QPoint offset = corner.toPoint() + QPoint(dx, dy);
                exact += image.copy({offset, size}) == picture ? 1 : 0;
            }
        }
        EXPECT_EQ(exact, 1) << position;
    }
}

TEST_F(CanvasViewTest, ThePicturesOwnPixelRatioMeansNothing)
{
    QImage picture = pattern({800, 450});
    const QImage expected = picture;
    picture.setDevicePixelRatio(2.0);
    view().setPicture(picture);
    EXPECT_EQ(grabbed().copy(0, 75, 800, 450), expected);
}

TEST_F(CanvasViewTest, StretchesAPictureOfAnotherSizeOntoTheCanvas)
{
    for (const QSize& size : {QSize(1600, 900), QSize(200, 200), QSize(1000, 40)}) {
        view().setPicture(quarters(size.width(), size.height()));
        EXPECT_EQ(pixelAtCanvas({2, 898}), quarterColours[0]);
        EXPECT_EQ(pixelAtCanvas({1598, 898}), quarterColours[1]);
        EXPECT_EQ(pixelAtCanvas({2, 2}), quarterColours[2]);
        EXPECT_EQ(pixelAtCanvas({1598, 2}), quarterColours[3]);
        const QImage image = grabbed();
        EXPECT_EQ(image.pixel(400, 74), image.pixel(0, 0));
        EXPECT_EQ(image.pixel(400, 525), image.pixel(0, 0));
    }
}

TEST_F(CanvasViewTest, SmoothsAPictureThatIsStretched)
{
    view().setPicture(quarters(200, 112));
    const QRgb between = grabbed().pixel(400, 150);
    EXPECT_GT(qRed(between), 0);
    EXPECT_LT(qRed(between), 255);
    EXPECT_GT(qGreen(between), 0);
    EXPECT_LT(qGreen(between), 255);
}

TEST_F(CanvasViewTest, ThePictureIsWhereTheConversionsSayWhenZoomedAndMoved)
{
    view().setPicture(quarters(1600, 900));
    for (const float scale : {0.3F, 1.0F, 2.0F, 3.7F, 9.0F}) {
        for (const QPointF& position : {QPointF(0, 0), QPointF(123.4, -87.5), QPointF(-311, 222)}) {
            application.setCanvasScale(scale);
            application.setCanvasPosition(static_cast<float>(position.x()),
                                          static_cast<float>(position.y()));
            expectQuartersAbout({800, 450});
        }
    }
}

TEST_F(CanvasViewTest, APartOfThePictureLooksLikeThatPartOfTheWhole)
{
    const QImage picture = pattern({90, 50});
    view().setPicture(picture);
    view().resize(3200, 1800);
    const QImage whole = grabbed();
    view().resize(800, 450);
    application.setCanvasScale(4.0F);
    application.setCanvasPosition(-300.0F, 500.0F);
    const QImage part = grabbed();
    const QImage expected = whole.copy(1200 + 300, 675 + 500, 800, 450);
    int largestDifference = 0;
    for (int y = 0; y < 450; ++y) {
        for (int x = 0; x < 800; ++x) {
            const QRgb a = part.pixel(x, y);
            const QRgb b = expected.pixel(x, y);
            largestDifference =
                std::max({largestDifference, std::abs(qRed(a) - qRed(b)),
                          std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
        }
    }
    EXPECT_LE(largestDifference, 2);
}

TEST_F(CanvasViewTest, ANullPictureIsBlackAndATransparentOneLiesOnBlack)
{
    view().setPicture(quarters(800, 450));
    EXPECT_EQ(pixelAtCanvas({10, 890}), quarterColours[0]);
    view().setPicture({});
    EXPECT_EQ(pixelAtCanvas({10, 890}), black);
    QImage half(800, 450, QImage::Format_ARGB32);
    half.fill(qRgba(255, 255, 255, 128));
    view().setPicture(half);
    EXPECT_EQ(pixelAtCanvas({10, 890}), qRgb(128, 128, 128));
}

TEST_F(CanvasViewTest, ANewPictureIsPaintedWithoutFurtherAsking)
{
    view().setPicture(quarters(800, 450));
    const auto seen = [&] {
        return view().screen()->grabWindow(view().winId(), 10, 80, 1, 1).toImage().pixel(0, 0);
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return seen() == quarterColours[0]; }));
    view().setPicture({});
    EXPECT_TRUE(QTest::qWaitFor([&] { return seen() == black; }));
}

TEST_F(CanvasViewTest, DrawsAtExtremeZoomsAndPositions)
{
    view().setPicture(quarters(1600, 900));
    for (const float scale : {100.0F, 1e6F, 1e12F, 1e30F}) {
        application.setCanvasScale(scale);
        // Half a view px per canvas px at scale 1: 15 canvas px off the middle are in the centre.
        application.setCanvasPosition(-7.5F * scale, -7.5F * scale);
        EXPECT_EQ(grabbed().pixel(400, 300), quarterColours[1]) << scale;
        application.setCanvasPosition(7.5F * scale, 7.5F * scale);
        EXPECT_EQ(grabbed().pixel(400, 300), quarterColours[2]) << scale;
        EXPECT_EQ(view().wantedPictureSize(), QSize(1600, 900));
    }
    application.setCanvasPosition(0.0F, 0.0F);
    application.setCanvasScale(1e-30F);
    const QImage image = grabbed();
    EXPECT_NE(image.pixel(0, 0), black);
    EXPECT_EQ(view().wantedPictureSize(), QSize(1, 1));
    application.setCanvasScale(1.0F);
    application.setCanvasPosition(1e30F, -1e30F);
    EXPECT_EQ(grabbed().pixel(400, 300), image.pixel(0, 0));
}

TEST_F(CanvasViewTest, WantsThePixelsThatTheCanvasCoversButNoMoreThanItHas)
{
    QSignalSpy changed(&view(), &CanvasView::wantedPictureSizeChanged);
    EXPECT_EQ(view().wantedPictureSize(), QSize(800, 450));
    application.setCanvasScale(0.5F);
    EXPECT_EQ(view().wantedPictureSize(), QSize(400, 225));
    EXPECT_EQ(changed.count(), 1);
    application.setCanvasScale(10.0F);
    EXPECT_EQ(view().wantedPictureSize(), QSize(1600, 900));
    EXPECT_EQ(changed.count(), 2);
    application.setCanvasScale(20.0F);
    application.setCanvasPosition(33.3F, 44.4F);
    EXPECT_EQ(changed.count(), 2);
    application.getRvKpConfig()->setKpSize(900.0F, 900.0F);
    EXPECT_EQ(view().wantedPictureSize(), QSize(900, 900));
    EXPECT_EQ(changed.count(), 3);
    application.setCanvasScale(1.0F);
    EXPECT_EQ(view().wantedPictureSize(), QSize(600, 600));
    EXPECT_EQ(changed.count(), 4);
    view().resize(300, 600);
    EXPECT_EQ(view().wantedPictureSize(), QSize(300, 300));
    EXPECT_EQ(changed.count(), 5);
    view().resize(300, 500);
    EXPECT_EQ(changed.count(), 5);
}

TEST_F(CanvasViewTest, LaysOutAnewWhenTheCanvasChangesItsSize)
{
    view().setPicture(quarters(800, 450));
    EXPECT_EQ(grabbed().pixel(10, 310), quarterColours[2]);
    application.getRvKpConfig()->setKpSize(300.0F, 300.0F);
    const QImage image = grabbed();
    EXPECT_EQ(image.pixel(10, 310), image.pixel(0, 0));
    EXPECT_EQ(image.pixel(99, 310), image.pixel(0, 0));
    EXPECT_EQ(image.pixel(101, 1), quarterColours[0]);
    EXPECT_EQ(image.pixel(698, 598), quarterColours[3]);
    EXPECT_EQ(image.pixel(700, 598), image.pixel(0, 0));
}

TEST_F(CanvasViewTest, ItemsOfTheHostLieOnThePictureAtTheirPixels)
{
    view().setPicture(quarters(800, 450));
    auto* item = view().scene()->addRect(100, 200, 30, 20, Qt::NoPen, Qt::white);
    item->setZValue(-1e9);
    const QImage image = grabbed();
    EXPECT_EQ(image.pixel(100, 200), 0xffffffff);
    EXPECT_EQ(image.pixel(129, 219), 0xffffffff);
    EXPECT_EQ(image.pixel(99, 200), quarterColours[0]);
    EXPECT_EQ(image.pixel(130, 219), quarterColours[0]);
    EXPECT_EQ(view().itemAt(110, 210), item);
    EXPECT_EQ(view().itemAt(300, 210), nullptr);
}

TEST_F(CanvasViewTest, TheCanvasComesBackWhenTheSceneIsCleared)
{
    view().setPicture(quarters(800, 450));
    view().scene()->clear();
    application.setCanvasScale(0.5F);
    view().setPicture(quarters(400, 226));
    EXPECT_TRUE(QTest::qWaitFor([&] { return pixelAtCanvas({10, 890}) == quarterColours[0]; }));
}

TEST_F(CanvasViewTest, AViewThatWentWithItsParentIsReplaced)
{
    application.setCanvasScale(2.0F);
    application.setCanvasPosition(10.0F, 20.0F);
    {
        QWidget window;
        QVBoxLayout layout(&window);
        layout.setContentsMargins(0, 0, 0, 0);
        layout.setSizeConstraint(QLayout::SetNoConstraint); // of which the platform would warn
        layout.addWidget(application.getGraphicsView());
        window.resize(400, 225);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(400, 225));
    }
    EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(1600, 900));
    application.getRvKpConfig()->setKpSize(160.0F, 90.0F);
    application.setCanvasPosition(11.0F, 21.0F);

    QGraphicsView* next = application.getGraphicsView();
    ASSERT_TRUE(next);
    next->resize(320, 180);
    next->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(next));
    EXPECT_EQ(application.getCanvasScale(), 2.0F);
    EXPECT_EQ(application.convertCanvasToView({80, 45}), QPointF(171, 69));
}

TEST(CanvasViewLifeTest, TheApplicationTakesALivingViewWithIt)
{
    QWidget window;
    QPointer<QGraphicsView> inWindow;
    QPointer<QGraphicsView> alone;
    {
        RvKpApplication application;
        inWindow = application.getGraphicsView();
        inWindow->setParent(&window);
        RvKpApplication another;
        alone = another.getGraphicsView();
        EXPECT_NE(alone, inWindow);
    }
    EXPECT_FALSE(inWindow);
    EXPECT_FALSE(alone);
    EXPECT_TRUE(window.children().isEmpty());
}
