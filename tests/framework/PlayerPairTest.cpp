// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Two applications in one process.

#include "PlayedTimeline.h"
#include "SampleMedia.h"

#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <QPainterPath>

#include <set>

using namespace qrvkp;

namespace {

/// An application whose player plays the numbered video, over a canvas of any size.
class Host
{
public:
    explicit Host(const QSize& canvas)
    {
        application.getRvKpConfig()->setKpSize(static_cast<float>(canvas.width()),
                                               static_cast<float>(canvas.height()));
        QObject::connect(&player(), &RvKpPlayer::sigPictureRendered, [this](const QImage& picture) {
            if (!picture.isNull())
                numbers.insert(numberOf(picture));
        });
        const auto track = adopt(RvKpTrack::create(SampleMedia::numberedVideo(), 0, -1, 0));
        track->setWidthAndHeight(static_cast<float>(canvas.width()),
                                 static_cast<float>(canvas.height()));
        track->setCenter(static_cast<float>(canvas.width()) / 2.0F,
                         static_cast<float>(canvas.height()) / 2.0F);
        const auto group = adopt(RvKpGroup::create(track->getDuration()));
        EXPECT_TRUE(group->addTrack(track.get()));
        EXPECT_TRUE(timeline->pushBackGroup(group.get()));
        player().setPictureSize(canvas);
    }

    RvKpPlayer& player() { return *application.getPlayer(); }

    void play()
    {
        player().setTimeLine(timeline.get());
        player().prepareAsync();
        player().start();
    }

    RvKpApplication application;
    const Reference<RvKpTimeLine> timeline = adopt(RvKpTimeLine::create());
    std::set<int> numbers; ///< of its pictures; -1 for one that is none of the video's
};

class PlayerPairTest : public testing::Test
{
protected:
    static constexpr int PatienceMs = 120000;

    static bool playsTo(Host& host, int number)
    {
        return QTest::qWaitFor(
            [&] { return !host.numbers.empty() && *host.numbers.rbegin() >= number; }, PatienceMs);
    }
};

/// What is seen on one canvas while there is another one.
class CanvasPairTest : public PlayedTimeline
{
protected:
    std::unique_ptr<RvKpApplication> m_other = std::make_unique<RvKpApplication>();
    const QPointF m_centre{160, 90};
};

} // namespace

TEST_F(PlayerPairTest, BothPlayAtOnce)
{
    Host first({320, 180});
    Host second({160, 200});
    first.play();
    second.play();
    EXPECT_TRUE(playsTo(first, 20));
    EXPECT_TRUE(playsTo(second, 20));
    for (const Host* host : {&first, &second}) {
        EXPECT_GE(host->numbers.size(), 3U);
        EXPECT_EQ(host->numbers.count(-1), 0U) << "every picture is one of the video, whole";
    }
}

TEST_F(PlayerPairTest, EachHasItsOwnStateAndPosition)
{
    Host first({320, 180});
    Host second({320, 180});
    first.play();
    EXPECT_TRUE(playsTo(first, 5));
    EXPECT_EQ(second.player().getState(), RvKpPlayerIdle);
    EXPECT_EQ(second.player().getCurrentPosition(), 0);
    first.player().pause();
    const long long position = first.player().getCurrentPosition();
    second.play();
    EXPECT_TRUE(playsTo(second, 10));
    EXPECT_TRUE(first.player().isPaused());
    EXPECT_EQ(first.player().getCurrentPosition(), position);
    second.player().setTimeLine(nullptr);
    first.player().start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.player().getState() == RvKpPlayerCompleted; },
                                PatienceMs));
}

TEST_F(PlayerPairTest, OnePlaysOnWhenTheOtherIsDestroyed)
{
    for (const bool olderGoes : {true, false}) {
        auto older = std::make_unique<Host>(QSize(320, 180));
        auto newer = std::make_unique<Host>(QSize(200, 100));
        older->play();
        newer->play();
        auto& gone = olderGoes ? older : newer;
        Host& stays = olderGoes ? *newer : *older;
        EXPECT_TRUE(playsTo(*gone, 5));
        EXPECT_TRUE(playsTo(stays, 5));
        gone.reset();
        stays.player().seekTo(1000, true);
        EXPECT_TRUE(playsTo(stays, 40));
        EXPECT_EQ(stays.numbers.count(-1), 0U) << "its canvas has the size that it had";
        EXPECT_EQ(stays.application.getRvKpConfig()->getKpSizeWidth(), olderGoes ? 200.0F : 320.0F);
    }
}

TEST_F(CanvasPairTest, EachCanvasHasItsOwnSize)
{
    appendColour(Green);
    const auto track = addColour(Red, {80, 40});
    prepare();
    EXPECT_TRUE(becomes(m_centre, Red));
    m_other->getRvKpConfig()->setKpSize(640.0F, 1000.0F);
    EXPECT_EQ(application->getRvKpConfig()->getKpSizeWidth(), 320.0F);
    EXPECT_EQ(application->getCanvasShowDimension(), QSizeF(320, 180));
    const auto expectPlace = [&](float x, float y) {
        track->setPosition(x, y);
        const QPointF place(static_cast<double>(x), static_cast<double>(y));
        EXPECT_TRUE(becomes(place + QPointF(38, 18), Red));
        EXPECT_TRUE(isColour(seenAt(place - QPointF(38, 18)), Red));
        EXPECT_TRUE(isColour(seenAt(place + QPointF(42, 0)), Green));
        EXPECT_TRUE(isColour(seenAt({1, 1}), Green));
        EXPECT_TRUE(isColour(seenAt({318, 178}), Green));
    };
    expectPlace(60.0F, 40.0F);
    m_other.reset();
    expectPlace(250.0F, 120.0F);
    EXPECT_EQ(application->getRvKpConfig()->getKpSizeHeight(), 180.0F);
}

TEST_F(CanvasPairTest, EachViewHasItsOwnPlace)
{
    QGraphicsView* const otherView = m_other->getGraphicsView();
    ASSERT_NE(otherView, &view());
    m_other->setCanvasScale(2.0F);
    m_other->setCanvasPosition(30.0F, 40.0F);
    EXPECT_EQ(application->getCanvasScale(), 1.0F);
    EXPECT_EQ(application->getCanvasPosition(), QPointF(0, 0));
    EXPECT_EQ(application->convertCanvasToView(m_centre), QPointF(160, 90));
}

TEST_F(CanvasPairTest, ANewTrackIsCentredOnTheCanvasOfTheOldestApplication)
{
    const auto newCentres = [] {
        const auto sprite = adopt(RvSpriteTrack::create(SampleMedia::picture(), 0, 100));
        const auto matte = adopt(RvTrkMatteEffectTrack::createPathMatteTrack(0, 100));
        EXPECT_EQ(sprite->getPositionX(), matte->getMatteCenterX());
        EXPECT_EQ(sprite->getPositionY(), matte->getMatteCenterY());
        return QPointF(static_cast<double>(sprite->getPositionX()),
                       static_cast<double>(sprite->getPositionY()));
    };
    m_other->getRvKpConfig()->setKpSize(1000.0F, 600.0F);
    EXPECT_EQ(newCentres(), QPointF(160, 90));
    RvKpApplication newest;
    application.reset();
    EXPECT_EQ(newCentres(), QPointF(500, 300));
    m_other.reset();
    EXPECT_EQ(newCentres(), QPointF(960, 540));
}
