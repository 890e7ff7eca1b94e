// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/canvas/MapGeometry.h>

#include <gtest/gtest.h>

#include <limits>

using norvel::MapGeometry;

namespace {

MapGeometry geometry(float canvasWidth, float canvasHeight, float viewWidth, float viewHeight,
                     float scale)
{
    MapGeometry made;
    made.canvasWidth = canvasWidth;
    made.canvasHeight = canvasHeight;
    made.viewWidth = viewWidth;
    made.viewHeight = viewHeight;
    made.scale = scale;
    return made;
}

void expectSize(const QSizeF& size, double width, double height)
{
    EXPECT_NEAR(size.width(), width, 1e-4);
    EXPECT_NEAR(size.height(), height, 1e-4);
}

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float quietNan = std::numeric_limits<float>::quiet_NaN();

} // namespace

TEST(MapGeometryTest, TheLongerSideOfTheMapIsTheGivenOne)
{
    // 96 / 1920 x 1080 = 54; 96 / 1920 x 1080 the other way round; a square has both sides.
    expectSize(geometry(1920, 1080, 800, 600, 1).mapSize(96), 96, 54);
    expectSize(geometry(1080, 1920, 800, 600, 1).mapSize(96), 54, 96);
    expectSize(geometry(700, 700, 800, 600, 1).mapSize(96), 96, 96);
    // 200 / 1000 x 333 = 66.6
    expectSize(geometry(1000, 333, 800, 600, 1).mapSize(200), 200, 66.6);
}

TEST(MapGeometryTest, IsComputedInSinglePrecision)
{
    const float height = 96.0F / 1001.0F * 333.0F;
    EXPECT_EQ(geometry(1001, 333, 800, 600, 1).mapSize(96).height(), static_cast<double>(height));
    const float width = 96.0F / 1.7F;
    EXPECT_EQ(geometry(1920, 1080, 800, 600, 1.7F).viewerSize({96, 54}).width(),
              static_cast<double>(width));
}

TEST(MapGeometryTest, AZoomedCanvasGrowsIntoTheSpareHeightOfATallerView)
{
    // 600 / 1080 > 800 / 1920. The room is t = 1920 / 800 x 600 = 1440 canvas px high.
    const QSizeF map(96, 54);
    const auto viewer = [&](float scale) {
        return geometry(1920, 1080, 800, 600, scale).viewerSize(map);
    };
    expectSize(viewer(1.0F), 96, 54);        // u = 1080
    expectSize(viewer(1.2F), 80, 54);        // u = 1296, still within the room
    expectSize(viewer(4.0F / 3.0F), 72, 54); // u = 1440, as high as the room
    expectSize(viewer(2.0F), 48, 36);        // u = 2160: 1440 / 2160 x 54
    expectSize(viewer(4.0F), 24, 18);        // u = 4320: 1440 / 4320 x 54
    expectSize(viewer(0.5F), 192, 54);       // u = 540; the width has no such limit
}

TEST(MapGeometryTest, AZoomedCanvasGrowsIntoTheSpareWidthOfAWiderView)
{
    // 450 / 1080 < 1600 / 1920. The room is t = 1080 / 450 x 1600 = 3840 canvas px wide.
    const QSizeF map(96, 54);
    const auto viewer = [&](float scale) {
        return geometry(1920, 1080, 1600, 450, scale).viewerSize(map);
    };
    expectSize(viewer(1.0F), 96, 54);
    expectSize(viewer(1.5F), 96, 36);        // u = 2880
    expectSize(viewer(2.0F), 96, 27);        // u = 3840
    expectSize(viewer(3.0F), 64, 18);        // u = 5760: 3840 / 5760 x 96
    expectSize(viewer(0.25F), 96, 54 * 4.0); // the height has no such limit
}

TEST(MapGeometryTest, AViewOfTheCanvasProportionsIsTakenAsAWiderOne)
{
    // 450 / 1080 = 800 / 1920: t = 1080 / 450 x 800 = 1920, u = 3840, 1920 / 3840 x 96 = 48.
    expectSize(geometry(1920, 1080, 800, 450, 2).viewerSize({96, 54}), 48, 27);
}

TEST(MapGeometryTest, ViewPixelsPerMapPixelAreThoseOfTheShownWidth)
{
    MapGeometry made = geometry(1920, 1080, 800, 600, 3);
    made.shownWidth = 800;
    EXPECT_EQ(made.viewPixelsPerMapPixel({5, 5, 96, 54}), 25.0F); // 3 x 800 / 96
    EXPECT_EQ(made.viewPixelsPerMapPixel({5, 5, 0, 54}), 0.0F);
}

TEST(MapGeometryTest, RecentringIgnoresWhereTheViewerWas)
{
    // (96 - 48) / 2 + 10, (54 - 36) / 2 + 20
    EXPECT_EQ(MapGeometry::viewerRect({10, 20, 96, 54}, {48, 36}, {11, 21, 2, 2}, true),
              QRectF(34, 29, 48, 36));
    EXPECT_EQ(MapGeometry::viewerRect({10, 20, 96, 54}, {192, 54}, {}, true),
              QRectF(-38, 20, 192, 54));
}

TEST(MapGeometryTest, AViewerWithinTheMapKeepsItsCentre)
{
    const QRectF map(10, 20, 96, 54);
    EXPECT_EQ(MapGeometry::viewerRect(map, {30.5, 20}, {40, 40, 10, 10}, false),
              QRectF(29.75, 35, 30.5, 20));
    // Flush with the border is within.
    EXPECT_EQ(MapGeometry::viewerRect(map, {20, 20}, {10, 20, 20, 20}, false),
              QRectF(10, 20, 20, 20));
}

TEST(MapGeometryTest, AViewerBeyondTheMapIsMovedInByWholeNumbers)
{
    const QRectF map(0, 0, 96, 54);
    // Beyond the left and the upper border: -7.5 and -3.75 become those of the map.
    EXPECT_EQ(MapGeometry::viewerRect(map, {20, 10}, {-2.5, -3.75, 10, 10}, false),
              QRectF(0, 0, 20, 10));
    // Left: 35.6 is cut to 35; 73.5 + 35 is 12.5 beyond 96: 22.5 is cut to 22. The top is within
    // the map and cut all the same: 8.9 becomes 8.
    EXPECT_EQ(MapGeometry::viewerRect(map, {73.5, 20.2}, {72.35, 19, 0, 0}, false),
              QRectF(22, 8, 73.5, 20.2));
    // 50 below: 40 + 20.5 is 6.5 beyond 54: 33.5 is cut to 33.
    EXPECT_EQ(MapGeometry::viewerRect(map, {10, 20.5}, {20, 50.25, 0, 0}, false),
              QRectF(15, 33, 10, 20.5));
}

TEST(MapGeometryTest, WholeNumbersAreCutTowardsZeroOnAMapElsewhere)
{
    const QRectF map(-10, 30, 96, 54);
    // -12.5 is cut to -12, and -10 is right of -12.5: -10. The top of 28.5 gives way to 30.
    EXPECT_EQ(MapGeometry::viewerRect(map, {20, 10}, {-2.5, 33.5, 0, 0}, false),
              QRectF(-10, 30, 20, 10));
    // 72.5 is cut to 72; 20 + 72 is 6 beyond 86: 66.
    EXPECT_EQ(MapGeometry::viewerRect(map, {20, 10}, {82.5, 40, 0, 0}, false),
              QRectF(66, 35, 20, 10));
}

TEST(MapGeometryTest, ALargerViewerThanTheMapGoesBeyondItsStart)
{
    // -52 gives way to 0; 192 + 0 is 96 beyond the map: -96.
    EXPECT_EQ(MapGeometry::viewerRect({0, 0, 96, 54}, {192, 54}, {20, 27, 48, 0}, false),
              QRectF(-96, 0, 192, 54));
}

TEST(MapGeometryTest, SizesThatMakeNoSenseGiveAnEmptyMap)
{
    for (const float side : {0.0F, -1.0F, infinite, -infinite, quietNan}) {
        EXPECT_EQ(geometry(side, 1080, 800, 600, 1).mapSize(96), QSizeF(0, 0)) << side;
        EXPECT_EQ(geometry(1920, side, 800, 600, 1).mapSize(96), QSizeF(0, 0)) << side;
    }
    EXPECT_EQ(geometry(1920, 1080, 800, 600, 1).mapSize(0), QSizeF(0, 0));
    EXPECT_EQ(geometry(1920, 1080, 800, 600, 1).mapSize(-96), QSizeF(0, 0));
    EXPECT_EQ(geometry(1920, 1080, 800, 600, 2).viewerSize({0, 0}), QSizeF(0, 0));
}

TEST(MapGeometryTest, AViewWithoutAnAreaHasNoSpareRoom)
{
    for (const float side : {0.0F, -1.0F, infinite, quietNan}) {
        expectSize(geometry(1920, 1080, side, 600, 2).viewerSize({96, 54}), 48, 27);
        expectSize(geometry(1920, 1080, 800, side, 2).viewerSize({96, 54}), 48, 27);
    }
}

TEST(MapGeometryTest, AScaleThatMakesNoSenseIsNone)
{
    for (const float scale : {0.0F, -2.0F, infinite, quietNan})
        EXPECT_EQ(geometry(1920, 1080, 800, 600, scale).viewerSize({96, 54}), QSizeF(96, 54));
}
