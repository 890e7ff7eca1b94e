// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayedTimeline.h"
#include "SampleMedia.h"

#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <QPainterPath>
#include <QTemporaryDir>

using namespace qrvkp;
using namespace qkpar;

namespace {

constexpr QRgb olive = 0xff808000;
constexpr QRgb cyan = 0xff00ffff;

/// Edits of a timeline whose player is prepared: nothing is played or sought, and nobody says that
/// something was changed.
class PlayerEditTest : public PlayedTimeline
{
protected:
    /// What is seen once it looks other than before, and no more changes come.
    QImage next(const QImage& before)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return grabbed() != before; }, PatienceMs));
        QImage seen = grabbed();
        while (QTest::qWaitFor([&] { return grabbed() != seen; }, QuietMs))
            seen = grabbed();
        return seen;
    }

    /// A matte of the size of the canvas whose shape is the right half of its box, without a limit.
    Reference<RvTrkMatteEffectTrack> addRightHalf()
    {
        auto matte = adopt(RvTrkMatteEffectTrack::createPathMatteTrack(0, 10000));
        auto* const path = new QPainterPath;
        path->addRect(CanvasWidth / 2.0, 0, CanvasWidth / 2.0, CanvasHeight);
        matte->setMattePath(path, static_cast<float>(CanvasWidth), static_cast<float>(CanvasHeight),
                            1.0F, RvMattePathType());
        matte->setEnableDrawPathSizeLimit(false);
        EXPECT_TRUE(timeline->addMixTrack(matte.get()));
        return matte;
    }

    /// `bind` takes over a reference.
    static void bind(RvIEffectTrack& effect, RvITrack& track)
    {
        track.retain();
        EXPECT_TRUE(effect.bind(&track, 1));
    }

    const QPointF m_centre{160, 90};
};

} // namespace

TEST_F(PlayerEditTest, ShowsANewAlpha)
{
    appendColour(Green);
    const auto track = addColour(Red, {80, 40});
    prepare();
    EXPECT_TRUE(becomes(m_centre, Red));
    track->setAlpha(0.5F);
    EXPECT_TRUE(becomes(m_centre, olive));
    track->setAlpha(0.0F);
    EXPECT_TRUE(becomes(m_centre, Green));
    track->setAlpha(1.0F);
    EXPECT_TRUE(becomes(m_centre, Red));
}

TEST_F(PlayerEditTest, ShowsANewPosition)
{
    appendColour(Green);
    const auto track = addColour(Red, {80, 40});
    prepare();
    EXPECT_TRUE(becomes(m_centre, Red));
    for (const QPoint& point : {QPoint(60, 30), QPoint(250, 150), QPoint(200, 60)}) {
        track->setPosition(static_cast<float>(point.x()), static_cast<float>(point.y()));
        EXPECT_TRUE(becomes(point + QPointF(38, 18), Red));
        EXPECT_TRUE(isColour(seenAt(point - QPointF(38, 18)), Red));
        EXPECT_TRUE(isColour(seenAt(point + QPointF(42, 0)), Green));
        EXPECT_TRUE(isColour(seenAt(point - QPointF(0, 22)), Green));
    }
    track->setCenter(100, 100);
    EXPECT_TRUE(becomes({62, 82}, Red));
}

TEST_F(PlayerEditTest, ShowsANewScaleAndSize)
{
    appendColour(Green);
    const auto track = addColour(Red, {80, 40});
    prepare();
    EXPECT_TRUE(becomes({198, 90}, Red));
    EXPECT_TRUE(isColour(seenAt({202, 90}), Green));
    track->setScale(2.0F);
    EXPECT_TRUE(becomes({238, 128}, Red));
    EXPECT_TRUE(isColour(seenAt({242, 90}), Green));
    track->setWidthAndHeight(20, 80);
    EXPECT_TRUE(becomes({160, 168}, Red));
    EXPECT_TRUE(isColour(seenAt({182, 90}), Green));
}

TEST_F(PlayerEditTest, ShowsANewRotation)
{
    appendColour(Green);
    const auto track = addColour(Red, {120, 10});
    prepare();
    EXPECT_TRUE(becomes({210, 90}, Red));
    track->setRotation(45.0F);
    EXPECT_TRUE(becomes({195, 55}, Red)) << "clockwise as seen";
    EXPECT_TRUE(isColour(seenAt({195, 125}), Green));
    EXPECT_TRUE(isColour(seenAt({210, 90}), Green));
    track->setRotation(90.0F);
    EXPECT_TRUE(becomes({160, 145}, Red));
    EXPECT_TRUE(isColour(seenAt({195, 55}), Green));
}

TEST_F(PlayerEditTest, ShowsANewSpeedAndFileStart)
{
    const auto track = appendNumbers();
    prepare();
    player().seekTo(1000, true);
    EXPECT_TRUE(becomesNumber(25));
    track->setSpeed(2.0F);
    EXPECT_TRUE(becomesNumber(50)) << seenNumber();
    track->setSpeed(0.5F);
    EXPECT_TRUE(becomesNumber(12)) << seenNumber();
    track->setFileStartTime(400);
    EXPECT_TRUE(becomesNumber(22)) << seenNumber();
    track->setStartPos(200);
    EXPECT_TRUE(becomesNumber(20)) << seenNumber();
    EXPECT_EQ(player().getCurrentPosition(), 1000);
}

TEST_F(PlayerEditTest, ShowsANewStackingOrder)
{
    const auto red = addColour(Red, {80, 40});
    const auto blue = addColour(Blue, {80, 40});
    prepare();
    EXPECT_TRUE(becomes(m_centre, Blue)) << "the later one is on top";
    red->setZOrder(5);
    EXPECT_TRUE(becomes(m_centre, Red));
    blue->setZOrder(6);
    EXPECT_TRUE(becomes(m_centre, Blue));
    blue->setZOrder(-1);
    EXPECT_TRUE(becomes(m_centre, Red));
}

TEST_F(PlayerEditTest, ShowsMixTracksThatComeAndGo)
{
    appendColour(Green);
    prepare();
    EXPECT_TRUE(becomes(m_centre, Green));
    const auto red = addColour(Red, {80, 40});
    EXPECT_TRUE(becomes(m_centre, Red));
    const auto blue = addColour(Blue, {80, 40});
    EXPECT_TRUE(becomes(m_centre, Blue));
    timeline->removeMixTrack(blue.get());
    EXPECT_TRUE(becomes(m_centre, Red));
    timeline->removeMixTrack(red.get());
    EXPECT_TRUE(becomes(m_centre, Green));
    timeline->addMixTrack(blue.get());
    EXPECT_TRUE(becomes(m_centre, Blue));
    blue->setStartPos(1);
    EXPECT_TRUE(becomes(m_centre, Green)) << "it begins later";
}

TEST_F(PlayerEditTest, ShowsGroupsThatComeAndGoAndMove)
{
    prepare();
    appendColour(Red, 2000);
    EXPECT_TRUE(becomes(m_centre, Red)) << "a timeline that was empty";
    appendColour(Blue, 2000);
    const auto groups = adopt(timeline->getGroups());
    ASSERT_EQ(groups.size(), 2U);
    player().seekTo(500, true);
    timeline->changeGroupPosition(groups[0].get(), 1);
    EXPECT_TRUE(becomes(m_centre, Blue));
    timeline->changeGroupPosition(groups[0].get(), 0);
    EXPECT_TRUE(becomes(m_centre, Red));
    groups[0]->setDuration(400);
    EXPECT_TRUE(becomes(m_centre, Blue)) << "the second group begins earlier";
    groups[0]->setDuration(2000);
    EXPECT_TRUE(becomes(m_centre, Red));
    timeline->removeGroup(groups[0].get());
    EXPECT_TRUE(becomes(m_centre, Blue));
    timeline->removeGroup(groups[1].get());
    EXPECT_TRUE(becomes(m_centre, Black));
    timeline->insertGroup(groups[0].get(), 0);
    EXPECT_TRUE(becomes(m_centre, Red));
}

TEST_F(PlayerEditTest, ShowsTracksThatComeIntoAGroupAndLeaveIt)
{
    appendColour(Green);
    prepare();
    EXPECT_TRUE(becomes(m_centre, Green));
    const auto group = std::move(adopt(timeline->getGroups()).front());
    const auto track = adopt(RvSpriteTrack::create(SampleMedia::colour(Blue), 0, 10000));
    group->addTrack(track.get());
    EXPECT_TRUE(becomes(m_centre, Blue));
    group->removeTrack(track.get());
    EXPECT_TRUE(becomes(m_centre, Green));
}

TEST_F(PlayerEditTest, AMatteThatMovesUncoversWhatLiesRightOfItsCentre)
{
    appendColour(Green);
    const auto track = addColour(Red, {CanvasWidth, CanvasHeight});
    const auto matte = addRightHalf();
    prepare();
    EXPECT_TRUE(becomes({20, 90}, Black)) << "an unbound matte cuts the whole canvas";
    bind(*matte, *track);
    EXPECT_TRUE(becomes({20, 90}, Green));
    for (int x = 40; x <= 280; x += 30) {
        matte->setMatteCenter(static_cast<float>(x), 90.0F);
        EXPECT_TRUE(becomes({x - 3.0, 90}, Green)) << x;
        EXPECT_TRUE(becomes({x + 3.0, 90}, Red)) << x;
        const QImage image = grabbed();
        for (const int y : {1, 60, 178}) {
            EXPECT_TRUE(isColour(image.pixel(1, y), Green)) << x;
            EXPECT_TRUE(isColour(image.pixel(318, y), Red)) << x << ": the border goes on";
        }
    }
    matte->setMatteCenter(-500.0F, 90.0F);
    EXPECT_TRUE(becomes({1, 1}, Red));
    matte->setMatteCenter(900.0F, 90.0F);
    EXPECT_TRUE(becomes({318, 1}, Green));
    matte->unbind();
    EXPECT_TRUE(becomes({318, 1}, Black));
}

TEST_F(PlayerEditTest, ShowsANewShapeAndEdgeOfAMatte)
{
    appendColour(Green);
    const auto track = addColour(Red, {CanvasWidth, CanvasHeight});
    const auto matte = addRightHalf();
    bind(*matte, *track);
    prepare();
    EXPECT_TRUE(becomes({300, 90}, Red));
    EXPECT_TRUE(isColour(seenAt({20, 90}), Green));
    auto* const left = new QPainterPath;
    left->addRect(0, 0, CanvasWidth / 2.0, CanvasHeight);
    matte->setMattePath(left, static_cast<float>(CanvasWidth), static_cast<float>(CanvasHeight),
                        1.0F, RvMattePathType());
    EXPECT_TRUE(becomes({20, 90}, Red));
    EXPECT_TRUE(isColour(seenAt({300, 90}), Green));
    matte->setMatteEclosionPercent(80.0F);
    const auto isSoft = [&] {
        const QRgb colour = seenAt({150, 90});
        return qRed(colour) > 60 && qRed(colour) < 250 && qGreen(colour) > 5;
    };
    EXPECT_TRUE(QTest::qWaitFor(isSoft, PatienceMs)) << std::hex << seenAt({150, 90});
    matte->setMatteEclosionPercent(0.0F);
    EXPECT_TRUE(becomes({150, 90}, Red));
    matte->setMatteCenter(60.0F, 90.0F);
    EXPECT_TRUE(becomes({58, 90}, Red));
    matte->setEnableDrawPathSizeLimit(true);
    matte->setMatteCenter(200.0F, 90.0F);
    EXPECT_TRUE(becomes({20, 90}, Green)) << "outside of the box";
    EXPECT_TRUE(isColour(seenAt({50, 90}), Red));
    matte->setMattePath(nullptr, 1.0F, 1.0F, 1.0F, RvMattePathType());
    EXPECT_TRUE(becomes({20, 90}, Red)) << "no shape cuts nothing";
}

TEST_F(PlayerEditTest, ShowsTheCanvasInANewSize)
{
    appendColour(Red);
    prepare();
    EXPECT_TRUE(becomes({1, 1}, Red));
    application->getRvKpConfig()->setKpSize(640.0F, 360.0F);
    // The clip stays where it is, centred on (160, 90), in a canvas of twice the size.
    EXPECT_TRUE(becomes({325, 90}, Black));
    EXPECT_TRUE(becomes({315, 175}, Red));
    EXPECT_TRUE(isColour(seenAt({160, 185}), Black));
    EXPECT_TRUE(isColour(seenAt({630, 350}), Black));
    application->getRvKpConfig()->setKpSize(160.0F, 180.0F);
    EXPECT_TRUE(becomes({158, 90}, Red));
    EXPECT_TRUE(isColour(seenAt({2, 178}), Red));
}

TEST_F(PlayerEditTest, ShowsANewStrengthOfAFilter)
{
    appendColour(Green);
    const auto track = addColour(Red, {80, 40});
    const auto filter = adopt(RvARFilterTrack::create(SampleMedia::colourTable(), 0, 10000));
    filter->setFilterAlpha(0.0F);
    timeline->addMixTrack(filter.get());
    prepare();
    EXPECT_TRUE(becomes(m_centre, Red));
    filter->setFilterAlpha(1.0F);
    EXPECT_TRUE(becomes(m_centre, cyan));
    EXPECT_TRUE(isColour(seenAt({10, 10}), 0xffff00ff));
    filter->setFilterAlpha(0.5F);
    EXPECT_TRUE(becomes(m_centre, 0xff808080));
    filter->setFilterAlpha(1.0F);
    bind(*filter, *track);
    EXPECT_TRUE(becomes({10, 10}, Green)) << "it acts on one track now";
    EXPECT_TRUE(isColour(seenAt(m_centre), cyan));
    timeline->removeMixTrack(filter.get());
    EXPECT_TRUE(becomes(m_centre, Red));
}

TEST_F(PlayerEditTest, ShowsLiquifyStrokesAsSoonAsTheyAreMadeAndAgainWhenTheyAreLoaded)
{
    appendNumbers();
    prepare();
    player().seekTo(1720, true); // bars of both colours
    ASSERT_TRUE(becomesNumber(43));
    const QImage plain = grabbed();
    const auto liquify = adopt(RvARLiquifyTrack::create("", 0, 10000));
    timeline->addMixTrack(liquify.get());
    RvARLiquifyOperation push;
    push.centerX = 40;
    push.centerY = 90;
    push.radius = 60;
    push.strength = 1.0F;
    push.movePoints = {QPointF(40, 90), QPointF(60, 90)};
    liquify->appendToLiquifyOperation(push);
    const QImage pending = next(plain);
    RvARLiquifyOperation bloat = push;
    bloat.centerX = 90;
    bloat.liquifyStyle = 1;
    liquify->appendToLiquifyOperation(bloat);
    const QImage both = next(pending);
    // What is confirmed looks as it did: the picture after it tells, which an edit asks for.
    liquify->confirmCurrentLiquify();
    const auto mark = addColour(Red, {4, 4});
    EXPECT_TRUE(becomes(m_centre, Red));
    timeline->removeMixTrack(mark.get());
    EXPECT_TRUE(QTest::qWaitFor([&] { return grabbed() == both; }, PatienceMs));

    const QTemporaryDir folder;
    ASSERT_TRUE(liquify->saveLiquifyConfig(folder.path().toLocal8Bit().toStdString()));
    timeline->removeMixTrack(liquify.get());
    EXPECT_TRUE(QTest::qWaitFor([&] { return grabbed() == plain; }, PatienceMs));
    const auto loaded = adopt(RvARLiquifyTrack::create("", 0, 10000));
    loaded->setTrackID(liquify->getTrackID()); // strokes are saved under the track's id
    timeline->addMixTrack(loaded.get());
    ASSERT_TRUE(loaded->loadLiquifyConfig(folder.path().toLocal8Bit().toStdString()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return grabbed() == both; }, PatienceMs));
}

TEST_F(PlayerEditTest, ShowsEditsWhileItPlaysAndAfterItWasCompletedOrStopped)
{
    appendColour(Green, 60000);
    const auto track = addColour(Red, {80, 40});
    track->setDuration(60000);
    prepareAndStart();
    EXPECT_TRUE(becomes(m_centre, Red));
    track->setAlpha(0.5F);
    EXPECT_TRUE(becomes(m_centre, olive));
    EXPECT_TRUE(player().isPlaying());
    player().seekTo(59950, true);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    track->setAlpha(0.0F);
    EXPECT_TRUE(becomes(m_centre, Green));
    player().stop();
    track->setAlpha(1.0F);
    EXPECT_TRUE(becomes(m_centre, Red));
}
