// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/PathMatte.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using rvengine::MatteShape;
using rvengine::PathMatte;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

/// The pixel as it is stored: `QImage::pixel` would take the alpha out of the colour.
QRgb pixelAt(const QImage& picture, int x, int y)
{
    return reinterpret_cast<const QRgb*>(picture.constScanLine(y))[x];
}

QRgb& pixelAt(QImage& picture, int x, int y)
{
    return reinterpret_cast<QRgb*>(picture.scanLine(y))[x];
}

QImage white(int width, int height)
{
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    return picture;
}

/// Pixels of any colour and alpha.
QImage noise(int width, int height)
{
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    std::mt19937 random(1);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            pixelAt(picture, x, y) = qPremultiply(static_cast<QRgb>(random()));
    }
    return picture;
}

MatteShape rectangle(const QRectF& rectangle, const QSizeF& box, bool limited = true)
{
    MatteShape shape;
    shape.path.addRect(rectangle);
    shape.box = box;
    shape.limitedToBox = limited;
    return shape;
}

/// The right half of a square box, without end.
MatteShape halfPlane(double side)
{
    return rectangle(QRectF(side / 2, 0, side / 2, side), QSizeF(side, side), false);
}

/// A ring that reaches over the left border of its box of 60 x 40.
MatteShape ring()
{
    MatteShape shape;
    shape.path.addEllipse(-10, 3, 50, 33);
    shape.path.addEllipse(12, 12, 10, 10);
    shape.box = QSizeF(60, 40);
    shape.limitedToBox = false;
    return shape;
}

/// What a matte leaves of a white picture of 100 x 60.
QImage onWhite(const PathMatte& matte, QPointF center)
{
    QImage picture = white(100, 60);
    matte.apply(picture, center);
    return picture;
}

/// The same for a shape that stands in the middle of the picture, or elsewhere.
QImage onWhite(const MatteShape& shape, double pixelsPerCanvasPx = 1.0,
               QPointF center = QPointF(50, 30))
{
    return onWhite(PathMatte(shape, pixelsPerCanvasPx), center);
}

/// A picture of 100 x 60 that is white in a rectangle and transparent elsewhere.
QImage whiteWithin(const QRect& rectangle)
{
    QImage picture(100, 60, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    for (int y = rectangle.top(); y <= rectangle.bottom(); ++y) {
        for (int x = rectangle.left(); x <= rectangle.right(); ++x)
            pixelAt(picture, x, y) = 0xFFFFFFFFU;
    }
    return picture;
}

int alphaAt(const QImage& picture, int x, int y)
{
    return qAlpha(pixelAt(picture, x, y));
}

using Plane = std::vector<std::vector<double>>; ///< rows of values

/// The mean over 2 * `reach` + 1 values of each row; the ends go on.
Plane rowMeans(const Plane& plane, int reach)
{
    Plane means = plane;
    for (std::size_t y = 0; y < plane.size(); ++y) {
        const int last = static_cast<int>(plane[y].size()) - 1;
        for (int x = 0; x <= last; ++x) {
            double sum = 0.0;
            for (int at = x - reach; at <= x + reach; ++at)
                sum += plane[y][static_cast<std::size_t>(std::clamp(at, 0, last))];
            means[y][static_cast<std::size_t>(x)] = sum / (2 * reach + 1);
        }
    }
    return means;
}

Plane turned(const Plane& plane)
{
    Plane result(plane.front().size(), std::vector<double>(plane.size()));
    for (std::size_t y = 0; y < plane.size(); ++y) {
        for (std::size_t x = 0; x < plane[y].size(); ++x)
            result[x][y] = plane[y][x];
    }
    return result;
}

/// The alpha within a rectangle, three times averaged in either direction.
Plane softened(const QImage& picture, const QRect& part, int reach)
{
    Plane plane(static_cast<std::size_t>(part.height()));
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x)
            plane[static_cast<std::size_t>(y - part.top())].push_back(alphaAt(picture, x, y));
    }
    for (int time = 0; time < 3; ++time)
        plane = turned(rowMeans(turned(rowMeans(plane, reach)), reach));
    return plane;
}

} // namespace

TEST(PathMatteTest, PutsTheMiddleOfTheBoxOnTheCentre)
{
    const MatteShape shape = rectangle(QRectF(10, 5, 20, 4), QSizeF(40, 20));

    EXPECT_EQ(onWhite(shape), whiteWithin(QRect(40, 25, 20, 4)));
    EXPECT_EQ(onWhite(shape, 1.0, QPointF(20, 60)), whiteWithin(QRect(10, 55, 20, 4)));
    EXPECT_EQ(onWhite(shape, 1.0, QPointF(95, 10)), whiteWithin(QRect(85, 5, 15, 4)));
    EXPECT_EQ(onWhite(shape, 1.0, QPointF(-500, 10)), whiteWithin(QRect()));
}

TEST(PathMatteTest, IsAsLargeAsShapeAndOutputTell)
{
    MatteShape shape = rectangle(QRectF(10, 6, 20, 4), QSizeF(40, 20));
    shape.scale = 3.0;

    EXPECT_EQ(onWhite(shape, 0.5), whiteWithin(QRect(35, 24, 30, 6)));
}

TEST(PathMatteTest, MultipliesEveryChannel)
{
    MatteShape shape = ring();
    shape.feather = 60.0;
    const QImage mask = onWhite(shape, 1.0, QPointF(50.3, 29.8));
    const QImage before = noise(100, 60);
    QImage after = before;
    PathMatte(shape, 1.0).apply(after, QPointF(50.3, 29.8));

    bool isPartial = false;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 100; ++x) {
            const int weight = alphaAt(mask, x, y);
            const auto times = [weight](int channel) { return (channel * weight + 127) / 255; };
            const QRgb pixel = pixelAt(before, x, y);
            ASSERT_EQ(pixelAt(after, x, y), qRgba(times(qRed(pixel)), times(qGreen(pixel)),
                                                  times(qBlue(pixel)), times(qAlpha(pixel))));
            isPartial = isPartial || (weight > 50 && weight < 200);
        }
    }
    EXPECT_TRUE(isPartial);
}

TEST(PathMatteTest, TouchesTheAreaAlone)
{
    MatteShape shape = ring();
    shape.feather = 20.0;
    const QRect area(33, 11, 29, 23);
    for (const bool limited : {true, false}) {
        shape.limitedToBox = limited;
        for (const QPointF center : {QPointF(50, 30), QPointF(41.7, 20.4), QPointF(5, 5)}) {
            QImage expected = noise(100, 60);
            QImage whole = expected;
            PathMatte(shape, 1.0).apply(whole, center);
            for (int y = area.top(); y <= area.bottom(); ++y) {
                for (int x = area.left(); x <= area.right(); ++x)
                    pixelAt(expected, x, y) = pixelAt(whole, x, y);
            }
            QImage part = noise(100, 60);
            PathMatte(shape, 1.0).apply(part, center, area);
            EXPECT_EQ(part, expected) << limited << " " << center.x();
        }
    }
}

TEST(PathMatteTest, TakesAnAreaThatReachesOverThePicture)
{
    const MatteShape shape = halfPlane(40);
    QImage picture = white(100, 60);
    PathMatte(shape, 1.0).apply(picture, QPointF(50, 30), QRect(-1000, 20, 5000, 5000));
    EXPECT_EQ(alphaAt(picture, 0, 19), 255);
    EXPECT_EQ(alphaAt(picture, 0, 20), 0);
    EXPECT_EQ(alphaAt(picture, 99, 59), 255);

    picture = white(100, 60);
    PathMatte(shape, 1.0).apply(picture, QPointF(50, 30), QRect(100, 0, 10, 10));
    EXPECT_EQ(picture, white(100, 60));
}

TEST(PathMatteTest, ShowsNothingBeyondTheBoxWithALimit)
{
    const MatteShape shape = rectangle(QRectF(-100, -100, 300, 300), QSizeF(20, 10));

    EXPECT_EQ(onWhite(shape), whiteWithin(QRect(40, 25, 20, 10)));
}

TEST(PathMatteTest, ContinuesTheBorderWithoutALimit)
{
    EXPECT_EQ(onWhite(halfPlane(40)), whiteWithin(QRect(50, 0, 50, 60)));
    EXPECT_EQ(onWhite(halfPlane(2)), whiteWithin(QRect(50, 0, 50, 60)));
    EXPECT_EQ(onWhite(halfPlane(40), 1.0, QPointF(-1e6, 30)), white(100, 60));
    EXPECT_EQ(onWhite(halfPlane(40), 1.0, QPointF(1e15, -1e15)), whiteWithin(QRect()));

    const QImage picture = onWhite(ring());
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 100; ++x)
            ASSERT_EQ(alphaAt(picture, x, y),
                      alphaAt(picture, std::clamp(x, 20, 79), std::clamp(y, 10, 49)));
    }
    EXPECT_EQ(alphaAt(picture, 0, 30), 255);
    EXPECT_EQ(alphaAt(picture, 0, 0), 0);
}

TEST(PathMatteTest, ContinuesABoxOfAnySizeWithoutASeam)
{
    for (const double side : {1.3, 13.7, 39.0, 40.5, 79.9999}) {
        const QImage picture = onWhite(halfPlane(side));
        for (int y = 0; y < 60; ++y) {
            ASSERT_EQ(alphaAt(picture, 47, y), 0) << side;
            ASSERT_EQ(alphaAt(picture, 52, y), 255) << side;
            ASSERT_EQ(alphaAt(picture, 99, y), 255) << side;
        }
    }
}

TEST(PathMatteTest, StandsBetweenPixels)
{
    const QImage plane = onWhite(halfPlane(40), 1.0, QPointF(50.25, 30));
    EXPECT_EQ(alphaAt(plane, 49, 30), 0);
    EXPECT_NEAR(alphaAt(plane, 50, 30), 0.75 * 255, 1);
    EXPECT_EQ(alphaAt(plane, 51, 30), 255);

    const MatteShape full = rectangle(QRectF(0, 0, 20, 10), QSizeF(20, 10));
    const QImage box = onWhite(full, 1.0, QPointF(50.25, 30.5));
    EXPECT_EQ(alphaAt(box, 39, 30), 0);
    EXPECT_NEAR(alphaAt(box, 40, 30), 0.75 * 255, 1);
    EXPECT_EQ(alphaAt(box, 41, 30), 255);
    EXPECT_EQ(alphaAt(box, 59, 30), 255);
    EXPECT_NEAR(alphaAt(box, 60, 30), 0.25 * 255, 1);
    EXPECT_EQ(alphaAt(box, 61, 30), 0);
    EXPECT_NEAR(alphaAt(box, 50, 25), 0.5 * 255, 1);
    EXPECT_EQ(alphaAt(box, 50, 26), 255);
    EXPECT_NEAR(alphaAt(box, 50, 35), 0.5 * 255, 1);
    EXPECT_NEAR(alphaAt(box, 40, 25), 0.5 * 0.75 * 255, 1);
}

TEST(PathMatteTest, ShowsPartsOfPixelsAtTheBorderOfTheBox)
{
    const MatteShape odd = rectangle(QRectF(0, 0, 21, 10.5), QSizeF(21, 10.5));
    const QImage picture = onWhite(odd);

    EXPECT_NEAR(alphaAt(picture, 39, 30), 0.5 * 255, 1);
    EXPECT_EQ(alphaAt(picture, 40, 30), 255);
    EXPECT_EQ(alphaAt(picture, 59, 30), 255);
    EXPECT_NEAR(alphaAt(picture, 60, 30), 0.5 * 255, 1);
    EXPECT_NEAR(alphaAt(picture, 50, 24), 0.25 * 255, 1);
    EXPECT_NEAR(alphaAt(picture, 50, 35), 0.25 * 255, 1);
}

TEST(PathMatteTest, SoftensTheEdgeOverTheRadiusToEitherSide)
{
    MatteShape shape = halfPlane(80);
    shape.feather = 50.0; // of 40 px
    const QImage picture = onWhite(shape);

    EXPECT_EQ(alphaAt(picture, 29, 30), 0);
    EXPECT_EQ(alphaAt(picture, 70, 30), 255);
    EXPECT_GT(alphaAt(picture, 34, 30), 0);
    EXPECT_LT(alphaAt(picture, 65, 30), 255);
    for (int x = 1; x < 100; ++x) {
        EXPECT_GE(alphaAt(picture, x, 30), alphaAt(picture, x - 1, 30));
        EXPECT_NEAR(alphaAt(picture, x, 30) + alphaAt(picture, 99 - x, 30), 255, 1);
        EXPECT_EQ(alphaAt(picture, x, 0), alphaAt(picture, x, 30));
        EXPECT_EQ(alphaAt(picture, x, 59), alphaAt(picture, x, 30));
    }
    EXPECT_NEAR(alphaAt(picture, 50, 30), 255 * 0.53, 3);
}

TEST(PathMatteTest, SoftensAsThreeMeansDo)
{
    MatteShape shape = ring();
    const QImage sharp = onWhite(shape);
    shape.feather = 45.0; // of 20 px: three times 3
    const Plane expected = softened(sharp, QRect(20, 10, 60, 40), 3);
    for (const bool limited : {true, false}) {
        shape.limitedToBox = limited;
        const QImage soft = onWhite(shape);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 60; ++x)
                ASSERT_NEAR(alphaAt(soft, x + 20, y + 10),
                            expected[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)], 1.1)
                    << x << " " << y;
        }
        EXPECT_EQ(alphaAt(soft, 0, 30), limited ? 0 : alphaAt(soft, 20, 30));
        EXPECT_GT(alphaAt(soft, 20, 30), 200);
    }
}

TEST(PathMatteTest, ScalesTheRadiusWithTheShape)
{
    MatteShape shape = halfPlane(20);
    shape.feather = 50.0;
    shape.scale = 2.0;
    MatteShape large = halfPlane(80);
    large.feather = 50.0;

    EXPECT_EQ(onWhite(shape, 2.0), onWhite(large));
}

TEST(PathMatteTest, CutsWhatTouchesTheBorderByTheBoxAlone)
{
    MatteShape shape = rectangle(QRectF(0, 0, 40, 20), QSizeF(40, 20));
    shape.feather = 100.0;

    EXPECT_EQ(onWhite(shape), whiteWithin(QRect(30, 20, 40, 20)));
}

TEST(PathMatteTest, LimitsTheFeather)
{
    const auto feathered = [](double feather) {
        MatteShape shape = halfPlane(40);
        shape.feather = feather;
        return onWhite(shape);
    };
    EXPECT_NE(feathered(100.0), feathered(0.0));
    EXPECT_EQ(feathered(-20.0), feathered(0.0));
    EXPECT_EQ(feathered(-Infinity), feathered(0.0));
    EXPECT_EQ(feathered(NaN), feathered(0.0));
    EXPECT_EQ(feathered(1e300), feathered(100.0));
    EXPECT_EQ(feathered(Infinity), feathered(100.0));
}

TEST(PathMatteTest, HidesAllWithoutABoxOrAPlace)
{
    const QImage nothing = whiteWithin(QRect());
    for (const double bad : {0.0, -40.0, 1e-320, NaN, Infinity, -Infinity}) {
        MatteShape shape = halfPlane(40);
        EXPECT_EQ(onWhite(shape, bad), nothing) << bad;
        shape.scale = bad;
        EXPECT_EQ(onWhite(shape), nothing) << bad;
        shape = halfPlane(40);
        shape.box.setWidth(bad);
        EXPECT_EQ(onWhite(shape), nothing) << bad;
        shape = halfPlane(40);
        shape.box.setHeight(bad);
        EXPECT_EQ(onWhite(shape), nothing) << bad;
    }
    for (const double bad : {NaN, Infinity, -Infinity}) {
        EXPECT_EQ(onWhite(halfPlane(40), 1.0, QPointF(bad, 30)), nothing) << bad;
        EXPECT_EQ(onWhite(halfPlane(40), 1.0, QPointF(50, bad)), nothing) << bad;
    }
    QImage part = white(100, 60);
    PathMatte(MatteShape(), 1.0).apply(part, QPointF(50, 30), QRect(10, 10, 5, 5));
    EXPECT_EQ(alphaAt(part, 12, 12), 0);
    EXPECT_EQ(alphaAt(part, 9, 12), 255);
}

TEST(PathMatteTest, HidesAllWithoutAPath)
{
    MatteShape shape = halfPlane(40);
    shape.path = QPainterPath();

    EXPECT_EQ(onWhite(shape), whiteWithin(QRect()));
}

TEST(PathMatteTest, SamplesALargeBoxCoarser)
{
    MatteShape shape;
    shape.path.addEllipse(2000, 2000, 16000, 16000);
    shape.box = QSizeF(20000, 20000);
    shape.feather = 10.0; // of 10000 px
    const PathMatte matte(shape, 1.0);
    EXPECT_EQ(onWhite(matte, QPointF(50, 30)), white(100, 60));
    EXPECT_EQ(onWhite(matte, QPointF(50, 30 + 6950)), white(100, 60));
    EXPECT_EQ(onWhite(matte, QPointF(50, 30 + 9050)), whiteWithin(QRect()));
    EXPECT_NEAR(alphaAt(onWhite(matte, QPointF(50, 30 + 8000)), 50, 30), 127, 5);
}

TEST(PathMatteTest, TakesBoxesAndPathsOfAnySize)
{
    for (const double side : {1e-5, 0.7, 1e7, 1e100}) {
        const PathMatte matte(halfPlane(side), 1.0);
        const double away = std::max(side, 100.0);
        EXPECT_EQ(onWhite(matte, QPointF(50 + away, 30)), whiteWithin(QRect())) << side;
        EXPECT_EQ(onWhite(matte, QPointF(50 - away, 30)), white(100, 60)) << side;
    }
    for (const double far : {1e6, 1e9, 1e20}) {
        const MatteShape shape =
            rectangle(QRectF(20, -far, 2 * far, 2 * far), QSizeF(40, 40), false);
        EXPECT_EQ(onWhite(shape), whiteWithin(QRect(50, 0, 50, 60))) << far;
    }
    // Qt draws nothing of a path with such numbers.
    EXPECT_EQ(onWhite(halfPlane(1e300)), whiteWithin(QRect()));
    EXPECT_EQ(onWhite(rectangle(QRectF(20, -1e300, 1e300, 1e300), QSizeF(40, 40), false)),
              whiteWithin(QRect()));
}

TEST(PathMatteTest, LeavesCopiesOfThePictureAlone)
{
    QImage picture = white(100, 60);
    const QImage copy = picture;
    PathMatte(halfPlane(40), 1.0).apply(picture, QPointF(50, 30));

    EXPECT_EQ(copy, white(100, 60));
    EXPECT_NE(picture, copy);
}

TEST(PathMatteTest, GivesOtherFormatsAnAlpha)
{
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32}) {
        QImage picture = white(100, 60).convertToFormat(format);
        PathMatte(halfPlane(40), 1.0).apply(picture, QPointF(50, 30));
        EXPECT_EQ(picture, whiteWithin(QRect(50, 0, 50, 60)));
    }
}

TEST(PathMatteTest, TakesAnEmptyPicture)
{
    QImage picture;
    const PathMatte matte(halfPlane(40), 1.0);
    matte.apply(picture, QPointF(50, 30));
    matte.apply(picture, QPointF(50, 30), QRect(0, 0, 10, 10));

    EXPECT_TRUE(picture.isNull());
}
