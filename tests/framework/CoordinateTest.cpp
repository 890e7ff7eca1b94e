// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleMedia.h"
#include "ShownCanvas.h"
#include "TrackKinds.h"

#include <rvkpcore/RvSpriteTrack.h>

#include <limits>
#include <random>

using namespace qrvkp;

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float quietNan = std::numeric_limits<float>::quiet_NaN();
constexpr float largest = std::numeric_limits<float>::max();
constexpr float smallest = std::numeric_limits<float>::denorm_min();

bool isFinite(const QPointF& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

Reference<RvSpriteTrack> newSprite(float width, float height)
{
    auto sprite = adopt(RvSpriteTrack::create(SampleMedia::picture(), 0, 1000));
    EXPECT_TRUE(sprite);
    sprite->setWidthAndHeight(width, height);
    return sprite;
}

/// The view of a canvas.
class ViewCoordinateTest : public ShownCanvas
{
protected:
    /// Points of the canvas and of the view that are the same, by both conversions.
    void expectSame(const QPointF& canvasPoint, const QPointF& viewPoint) const
    {
        EXPECT_TRUE(isNear(application.convertCanvasToView(canvasPoint), viewPoint));
        EXPECT_TRUE(isNear(application.convertViewToCanvas(viewPoint), canvasPoint));
    }
};

/// A track of 400 x 200 that stands unturned with its centre at (1000, 300).
class TrackCoordinateTest : public testing::Test
{
protected:
    void SetUp() override
    {
        track = newSprite(400.0F, 200.0F);
        track->setPosition(1000.0F, 300.0F);
    }

    /// Points of the track and of the canvas that are the same, by both conversions.
    void expectSame(const QPointF& trackPoint, const QPointF& canvasPoint) const
    {
        EXPECT_TRUE(isNear(application.convertTrackToCanvas(track.get(), trackPoint), canvasPoint));
        EXPECT_TRUE(isNear(application.convertCanvasToTrack(track.get(), canvasPoint), trackPoint));
    }

    void expectFraction(const QPointF& fraction, const QPointF& canvasPoint) const
    {
        EXPECT_TRUE(isNear(application.convertTrackOriginContentToCanvas(track.get(), fraction),
                           canvasPoint));
    }

    RvKpApplication application;
    Reference<RvSpriteTrack> track;
};

} // namespace

TEST_F(ViewCoordinateTest, PutsTheCanvasIntoTheMiddleOfATallerView)
{
    expectSame({0, 0}, {0, 525});
    expectSame({1600, 900}, {800, 75});
    expectSame({800, 450}, {400, 300});
    expectSame({400, 300}, {200, 375});
    expectSame({-100, 1000}, {-50, 25});
}

TEST_F(ViewCoordinateTest, PutsTheCanvasIntoTheMiddleOfAWiderView)
{
    view().resize(2000, 450);
    expectSame({0, 0}, {600, 450});
    expectSame({1600, 900}, {1400, 0});
    expectSame({10, 20}, {605, 440});
}

TEST_F(ViewCoordinateTest, KeepsTheCentreWhenTheCanvasIsZoomed)
{
    application.setCanvasScale(2.0F);
    expectSame({800, 450}, {400, 300});
    expectSame({0, 0}, {-400, 750});
    expectSame({900, 500}, {500, 250});
    application.setCanvasScale(0.25F);
    expectSame({0, 0}, {300, 356.25});
}

TEST_F(ViewCoordinateTest, MovesTheCanvasToTheRightAndUpByViewPixelsAtEveryZoom)
{
    application.setCanvasPosition(100.0F, -50.0F);
    expectSame({800, 450}, {500, 350});
    expectSame({0, 0}, {100, 575});
    application.setCanvasScale(2.0F);
    expectSame({800, 450}, {500, 350});
    expectSame({0, 0}, {-300, 800});
    expectSame({900, 500}, {600, 300});
}

TEST_F(ViewCoordinateTest, FollowsTheSizeOfTheCanvas)
{
    application.getRvKpConfig()->setKpSize(400.0F, 600.0F);
    expectSame({0, 0}, {200, 600});
    expectSame({400, 600}, {600, 0});
    expectSame({100, 150}, {300, 450});
}

TEST_F(ViewCoordinateTest, ShowDimensionIsTheCanvasFittedIntoTheView)
{
    application.setCanvasScale(3.0F);
    application.setCanvasPosition(10.0F, 20.0F);
    EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(800, 450));
    view().resize(400, 800);
    EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(400, 225));
    view().resize(2000, 450);
    EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(800, 450));
    view().resize(3200, 1800);
    EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(3200, 1800));
    application.getRvKpConfig()->setKpSize(100.0F, 100.0F);
    EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(1800, 1800));
}

TEST_F(ViewCoordinateTest, ThereAndBackIsTheSamePoint)
{
    std::mt19937 random(20260101);
    const auto number = [&](double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random);
    };
    for (int round = 0; round < 500; ++round) {
        view().resize(static_cast<int>(number(50, 3000)), static_cast<int>(number(50, 3000)));
        application.getRvKpConfig()->setKpSize(static_cast<float>(number(1, 8000)),
                                               static_cast<float>(number(1, 8000)));
        application.setCanvasScale(static_cast<float>(std::exp(number(-3, 4))));
        application.setCanvasPosition(static_cast<float>(number(-5000, 5000)),
                                      static_cast<float>(number(-5000, 5000)));
        const QPointF point(number(-10000, 10000), number(-10000, 10000));
        EXPECT_TRUE(isNear(application.convertViewToCanvas(application.convertCanvasToView(point)),
                           point, 1e-6));
    }
}

TEST_F(ViewCoordinateTest, ACanvasWithoutAnAreaIsOnePointOfTheView)
{
    for (const QSizeF& size : {QSizeF(0, 0), QSizeF(1600, 0), QSizeF(-5, 900),
                               QSizeF(static_cast<double>(quietNan), 900),
                               QSizeF(1600, static_cast<double>(infinite))}) {
        application.getRvKpConfig()->setKpSize(static_cast<float>(size.width()),
                                               static_cast<float>(size.height()));
        EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(0, 0));
        EXPECT_EQ(application.convertCanvasToView({12, 34}), QPointF(400, 300));
        EXPECT_EQ(application.convertViewToCanvas({12, 34}), QPointF(0, 0));
        EXPECT_EQ(view().wantedPictureSize(), QSize(1, 1));
        grabbed();
    }
}

TEST_F(ViewCoordinateTest, IgnoresScalesThatAreNotPositiveAndFinite)
{
    EXPECT_EQ(application.getCanvasScale(), 1.0F);
    application.setCanvasScale(2.5F);
    for (const float scale : {0.0F, -1.0F, quietNan, infinite, -infinite})
        application.setCanvasScale(scale);
    EXPECT_EQ(application.getCanvasScale(), 2.5F);
}

TEST_F(ViewCoordinateTest, IgnoresPositionsThatAreNotFinite)
{
    EXPECT_EQ(application.getCanvasPosition(), QPointF(0, 0));
    application.setCanvasPosition(1.5F, -2.5F);
    for (const float coordinate : {quietNan, infinite, -infinite}) {
        application.setCanvasPosition(coordinate, 0.0F);
        application.setCanvasPosition(0.0F, coordinate);
    }
    EXPECT_EQ(application.getCanvasPosition(), QPointF(1.5, -2.5));
}

TEST_F(ViewCoordinateTest, GivesBackWhatHasNoFiniteImage)
{
    const double infinity = static_cast<double>(infinite);
    for (const QPointF& point : {QPointF(infinity, 3), QPointF(3, -infinity)}) {
        for (const QPointF& converted :
             {application.convertCanvasToView(point), application.convertViewToCanvas(point)}) {
            EXPECT_EQ(converted.x(), point.x());
            EXPECT_EQ(converted.y(), point.y());
        }
    }
    const QPointF nan = application.convertCanvasToView({static_cast<double>(quietNan), 3});
    EXPECT_TRUE(std::isnan(nan.x()));
    EXPECT_EQ(nan.y(), 3.0);
}

TEST_F(ViewCoordinateTest, BearsExtremeScalesPositionsAndSizes)
{
    for (const float scale : {smallest, 1e-30F, 1e30F, largest}) {
        for (const float position : {0.0F, -largest, largest}) {
            for (const float size : {smallest, 1.0F, largest}) {
                application.setCanvasScale(scale);
                application.setCanvasPosition(position, position);
                application.getRvKpConfig()->setKpSize(size, size);
                EXPECT_TRUE(isFinite(application.convertCanvasToView({1, 2})));
                EXPECT_TRUE(isFinite(application.convertViewToCanvas({1, 2})));
                EXPECT_FALSE(view().wantedPictureSize().isEmpty());
            }
        }
    }
}

TEST(NoViewCoordinateTest, TheViewIsTakenToBeOfTheSizeOfTheCanvas)
{
    RvKpApplication application;
    EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(1920, 1080));
    application.getRvKpConfig()->setKpSize(200.0F, 100.0F);
    EXPECT_EQ(application.getCanvasShowDimension(), QSizeF(200, 100));
    EXPECT_EQ(application.convertCanvasToView({0, 0}), QPointF(0, 100));
    EXPECT_EQ(application.convertViewToCanvas({50, 25}), QPointF(50, 75));
    application.setCanvasScale(2.0F);
    application.setCanvasPosition(10.0F, 5.0F);
    EXPECT_EQ(application.convertCanvasToView({0, 0}), QPointF(-90, 145));
    EXPECT_EQ(application.convertViewToCanvas({-90, 145}), QPointF(0, 0));
}

TEST_F(TrackCoordinateTest, PlacesTheCentreOfTheContentAtThePosition)
{
    expectSame({200, 100}, {1000, 300});
    expectSame({0, 0}, {800, 200});
    expectSame({400, 200}, {1200, 400});
    expectSame({30, 170}, {830, 370});
}

TEST_F(TrackCoordinateTest, ScalesAboutTheCentre)
{
    track->setScale(0.5F);
    expectSame({200, 100}, {1000, 300});
    expectSame({0, 0}, {900, 250});
    expectSame({400, 150}, {1100, 325});
}

TEST_F(TrackCoordinateTest, TurnsClockwiseAsSeen)
{
    track->setRotation(90.0F);
    track->setScale(0.5F);
    expectSame({200, 100}, {1000, 300});
    expectSame({400, 100}, {1000, 200}); // the right side is below
    expectSame({200, 200}, {1050, 300}); // the top is on the right
    expectSame({0, 0}, {950, 400});

    track->setRotation(30.0F);
    track->setScale(2.0F);
    track->setPosition(0.0F, 0.0F);
    expectSame({300, 100}, {100 * std::sqrt(3.0), -100});
    expectSame({200, 150}, {50, 50 * std::sqrt(3.0)});
}

TEST_F(TrackCoordinateTest, ManyTurnsAndTurnsBackwardsAreTurnsOfLess)
{
    track->setRotation(-270.0F);
    expectSame({400, 100}, {1000, 100});
    track->setRotation(360.0F * 10000.0F + 90.0F);
    expectSame({400, 100}, {1000, 100});
}

TEST_F(TrackCoordinateTest, FractionsCountFromTheTopLeftOfTheContent)
{
    expectFraction({0, 0}, {800, 400});
    expectFraction({1, 0}, {1200, 400});
    expectFraction({0, 1}, {800, 200});
    expectFraction({1, 1}, {1200, 200});
    expectFraction({0.5, 0.5}, {1000, 300});
    expectFraction({0.25, 0.75}, {900, 250});
    expectFraction({-0.5, 2}, {600, 0});
}

TEST_F(TrackCoordinateTest, FractionsTurnAndScaleWithTheTrack)
{
    track->setRotation(90.0F);
    track->setScale(0.5F);
    expectFraction({0, 0}, {1050, 400});
    expectFraction({1, 1}, {950, 200});
    expectFraction({0.25, 0.75}, {975, 350});
}

TEST_F(TrackCoordinateTest, AnotherWrapperOfTheTrackGivesTheSame)
{
    const auto wrapper = adopt(RvITrack::create(track->getContext()));
    EXPECT_EQ(application.convertTrackToCanvas(wrapper.get(), {0, 0}), QPointF(800, 200));
    EXPECT_EQ(application.convertCanvasToTrack(wrapper.get(), {800, 200}), QPointF(0, 0));
    EXPECT_EQ(application.convertTrackOriginContentToCanvas(wrapper.get(), {0, 0}),
              QPointF(800, 400));
}

TEST_F(TrackCoordinateTest, TheViewHasNoPartInIt)
{
    application.setCanvasScale(3.0F);
    application.setCanvasPosition(50.0F, 60.0F);
    expectSame({0, 0}, {800, 200});
    expectFraction({0, 0}, {800, 400});
}

TEST_F(TrackCoordinateTest, ThereAndBackIsTheSamePoint)
{
    std::mt19937 random(20260102);
    const auto number = [&](double from, double to) {
        return static_cast<float>(std::uniform_real_distribution<double>(from, to)(random));
    };
    for (int round = 0; round < 500; ++round) {
        track->setWidthAndHeight(number(1, 5000), number(1, 5000));
        track->setPosition(number(-3000, 3000), number(-3000, 3000));
        track->setRotation(number(-1000, 1000));
        track->setScale(std::exp(number(-3, 3)));
        const QPointF point(static_cast<double>(number(-9000, 9000)),
                            static_cast<double>(number(-9000, 9000)));
        const QPointF canvas = application.convertTrackToCanvas(track.get(), point);
        EXPECT_TRUE(isNear(application.convertCanvasToTrack(track.get(), canvas), point, 1e-6));
    }
}

TEST_F(TrackCoordinateTest, ATrackOfScaleZeroIsAPoint)
{
    track->setScale(0.0F);
    track->setRotation(77.0F);
    EXPECT_EQ(application.convertTrackToCanvas(track.get(), {3, 4}), QPointF(1000, 300));
    EXPECT_EQ(application.convertCanvasToTrack(track.get(), {3, 4}), QPointF(200, 100));
    EXPECT_EQ(application.convertTrackOriginContentToCanvas(track.get(), {1, 1}),
              QPointF(1000, 300));
}

TEST_F(TrackCoordinateTest, GivesThePointBackWhereTheTrackIsNowhere)
{
    const QPointF point(0.25, 0.5);
    const auto expectUnchanged = [&] {
        EXPECT_EQ(application.convertTrackToCanvas(track.get(), point), point);
        EXPECT_EQ(application.convertTrackOriginContentToCanvas(track.get(), point), point);
    };
    for (const float value : {quietNan, infinite, -infinite}) {
        track = newSprite(value, 100.0F);
        expectUnchanged();
        track = newSprite(100.0F, 100.0F);
        track->setPosition(0.0F, value);
        expectUnchanged();
        track->setPosition(0.0F, 0.0F);
        track->setRotation(value);
        expectUnchanged();
        EXPECT_EQ(application.convertCanvasToTrack(track.get(), point), point);
        track->setRotation(0.0F);
        track->setScale(value);
        expectUnchanged();
    }
}

TEST_F(TrackCoordinateTest, ATrackThatShowsNoPictureChangesNothing)
{
    const QPointF point(12.5, -7);
    const auto expectUnchanged = [&](RvITrack* other) {
        EXPECT_EQ(application.convertTrackToCanvas(other, point), point);
        EXPECT_EQ(application.convertCanvasToTrack(other, point), point);
        EXPECT_EQ(application.convertTrackOriginContentToCanvas(other, point), point);
    };
    expectUnchanged(nullptr);
    int others = 0;
    for (const TrackKind& kind : trackKinds()) {
        if (kind.type == RvTrackTypeVideo || kind.type == RvTrackTypeSprite)
            continue;
        expectUnchanged(adopt(kind.make()).get());
        ++others;
    }
    EXPECT_GT(others, 5);
}
