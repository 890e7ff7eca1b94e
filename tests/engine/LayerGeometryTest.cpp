// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/LayerGeometry.h>

#include <gtest/gtest.h>

#include <limits>

using rvengine::CanvasGeometry;
using rvengine::contentPixels;
using rvengine::LayerGeometry;
using rvengine::Placement;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

/// The geometry in a picture of 320 x 180 px of a canvas of that size.
LayerGeometry geometry(const Placement& placement)
{
    return {placement, CanvasGeometry{QSizeF(320, 180), QSize(320, 180)}};
}

const QPointF middle(160, 90);

} // namespace

TEST(CanvasGeometryTest, TurnsTheCanvasIntoAPicture)
{
    const CanvasGeometry canvas{QSizeF(320, 180), QSize(640, 90)};
    EXPECT_EQ(canvas.scaleX(), 2.0);
    EXPECT_EQ(canvas.scaleY(), 0.5);
    EXPECT_EQ(canvas.scale(), 2.0);
    EXPECT_EQ(canvas.toPicture(QPointF(0, 0)), QPointF(0, 90));
    EXPECT_EQ(canvas.toPicture(QPointF(10, 170)), QPointF(20, 5));
}

TEST(LayerGeometryTest, ContentHasWholePixelsAndAtLeastOne)
{
    EXPECT_EQ(contentPixels({320, 180, middle}), QSize(320, 180));
    EXPECT_EQ(contentPixels({320.5, 180.4, middle, 7.0}), QSize(321, 180));
    EXPECT_EQ(contentPixels({0.2, 1.4, middle}), QSize(1, 1));
    EXPECT_EQ(contentPixels({0.0, -5.0, middle}), QSize(1, 1));
    EXPECT_EQ(contentPixels({1e300, Infinity, middle}), QSize(1000000, 1000000));
}

TEST(LayerGeometryTest, PutsTheEdgesOnWholePixels)
{
    EXPECT_EQ(geometry({100, 50, middle}).bounds(), QRect(110, 65, 100, 50));
    EXPECT_EQ(geometry({101, 51, QPointF(160.25, 90.25)}).bounds(), QRect(110, 64, 101, 51));
    EXPECT_EQ(geometry({50, 25, QPointF(100, 120), 2.0}).bounds(), QRect(50, 35, 100, 50));
}

TEST(LayerGeometryTest, CoversAtLeastOnePixelOnEachSide)
{
    EXPECT_EQ(geometry({0.2, 50, QPointF(160.25, 90)}).bounds(), QRect(160, 65, 1, 50));
    EXPECT_EQ(geometry({50, 0.2, QPointF(160, 89.75)}).bounds(), QRect(135, 90, 50, 1));
    EXPECT_EQ(geometry({0.2, 50, middle}).contentSize(), QSize(1, 50));
    EXPECT_EQ(geometry({50, 0.2, middle}).contentSize(), QSize(50, 1));
    EXPECT_EQ(geometry({0.2, 50, middle, 1.0, 30.0}).contentSize(), QSize(1, 50));
    EXPECT_EQ(geometry({50, 0.2, middle, 1.0, 30.0}).contentSize(), QSize(50, 1));
}

TEST(LayerGeometryTest, BoundsATurnedLayer)
{
    EXPECT_EQ(geometry({100, 50, middle, 1.0, 90.0}).bounds(), QRect(135, 40, 50, 100));
    EXPECT_EQ(geometry({101, 51, QPointF(160.25, 90.25), 1.0, 360.0}).bounds(),
              QRect(110, 64, 101, 51))
        << "a whole turn is none";
    EXPECT_EQ(geometry({100, 50, middle, 1.0, 90.0}).contentSize(), QSize(100, 50));
}

TEST(LayerGeometryTest, NamesNoSizeBeyondTheLargestContent)
{
    EXPECT_EQ(geometry({8192, 8192, middle}).contentSize(), QSize(8192, 8192));
    EXPECT_EQ(geometry({8193, 10, middle}).contentSize(), QSize());
    EXPECT_EQ(geometry({10, 8193, middle}).contentSize(), QSize());
    EXPECT_EQ(geometry({8192, 8192, middle, 1.0, 30.0}).contentSize(), QSize(8192, 8192));
    EXPECT_EQ(geometry({8193, 10, middle, 1.0, 30.0}).contentSize(), QSize());
}

TEST(LayerGeometryTest, IsSeenWhereItMeetsThePicture)
{
    EXPECT_TRUE(geometry({100, 50, middle}).isSeen());
    EXPECT_TRUE(geometry({100, 50, QPointF(-49, 90)}).isSeen());
    EXPECT_FALSE(geometry({100, 50, QPointF(-50, 90)}).isSeen());
    EXPECT_TRUE(geometry({100, 50, QPointF(160, 204)}).isSeen());
    EXPECT_FALSE(geometry({100, 50, QPointF(160, 205)}).isSeen());
}

TEST(LayerGeometryTest, IsSeenUpToAMillionPixels)
{
    EXPECT_TRUE(geometry({1e6, 1e6, middle}).isSeen());
    EXPECT_FALSE(geometry({1e6 + 1, 1e6, middle}).isSeen());
    EXPECT_FALSE(geometry({1e6, 1e6 + 1, middle}).isSeen());
    EXPECT_TRUE(geometry({1e6, 1e6, QPointF(5e5, 90)}).isSeen());
    EXPECT_FALSE(geometry({1e6, 1e6, middle, 1.0, NaN}).isSeen());
    EXPECT_FALSE(geometry({1e6, 1e6, middle, 1.0, Infinity}).isSeen());
}
