// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// What the compare player makes of the size, the length and the content of files.

#include "ComparePlayerFixture.h"
#include "PlayerMedia.h"

#include <norvel/widgets/player/LabCompareLayout.h>
#include <norvel/widgets/player/LabCompareMaskView.h>
#include <norvel/widgets/player/QLabPlayer.h>

#include <timeline/ScopedPathEncoding.h>

#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvKpTrack.h>

#include <QLabel>
#include <QLayout>

#include <limits>

using namespace qrvkp;

TEST_F(ComparePlayerTest, CanHaveAPlayerOfItsOwn)
{
    makePlayer(true);
    ASSERT_EQ(widget->layout()->count(), 1);
    auto* const own = qobject_cast<QLabPlayer*>(widget->layout()->itemAt(0)->widget());
    ASSERT_TRUE(own);
    EXPECT_TRUE(own->isAncestorOf(&view()));
    EXPECT_EQ(mask()->parentWidget(), own->getCanvasWidget());
    EXPECT_EQ(view().size(), QSize(960, 540));
    showPair(m_red, m_blue, true);
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    QLabel* const time = own->findChild<QLabel*>("timeLabel");
    EXPECT_TRUE(QTest::qWaitFor([&] { return time->text() == "00:00:01/00:00:01"; }, PatienceMs));
}

TEST_F(ComparePlayerTest, SetsTwoVideosUpStepByStep)
{
    const std::string red = m_red.toStdString();
    const std::string blue = m_blue.toStdString();
    const Calls expected{
        "RvKpPlayer::stop()",
        "RvKpTimeLine::create()",
        "RvKpPlayer::setTimeLine(timeline)",
        "RvKpTrack::create(\"" + blue + "\", 0, -1, 0) -> base",
        "RvIMediaTrack::setCenter(base, 960, 540)",
        "RvIMediaTrack::setScale(base, 6.003125)",
        "RvKpGroup::create(1000) -> group",
        "RvKpGroup::addTrack(group, base)",
        "RvKpTimeLine::pushBackGroup(group)",
        "RvKpTrack::create(\"" + red + "\", 0, -1, 0) -> mix",
        "RvITrack::setVolumeAtTime(mix, 0, 0)",
        "RvIMediaTrack::setCenter(mix, 960, 540)",
        "RvIMediaTrack::setScale(mix, 6.003125)",
        "RvKpTimeLine::addMixTrack(mix)",
        "RvTrkMatteEffectTrack::createPathMatteTrack(0, 1000) -> matte",
        "RvTrkMatteEffectTrack::setMatteEclosionPercent(matte, 0)",
        "RvTrkMatteEffectTrack::setMatteCenter(matte, 960, 540)",
        "RvIEffectTrack::bind(matte, mix, 2)",
        "RvTrkMatteEffectTrack::setMatteBlendMode(matte, 25)",
        "RvTrkMatteEffectTrack::setEnableDrawPathSizeLimit(matte, false)",
        "RvTrkMatteEffectTrack::setMattePath(matte, path, 800, 450, 6.003125, 1)",
        "RvKpTimeLine::addMixTrack(matte)",
        "RvKpPlayer::prepareAsync()",
        "RvTrkMatteEffectTrack::setMatteCenter(matte, 960, 540)",
    };
    EXPECT_EQ(setUp(m_red, m_blue, true), expected);
    EXPECT_TRUE(reaches(RvKpPlayerPrepared));
}

TEST_F(ComparePlayerTest, MakesTheDurationsEqualAndTellsEveryMoveThen)
{
    const QString shorter = PlayerMedia::red(64, 36, 5.0);
    const QString longer = PlayerMedia::blue(64, 36, 8.0);
    showPair(shorter, shorter, true);
    EXPECT_TRUE(mask()->throttle());
    showPair(shorter, longer, true);
    EXPECT_EQ(baseTrack()->getDuration(), 8000);
    EXPECT_EQ(mixTrack()->getDuration(), 8000);
    EXPECT_EQ(matte()->getDuration(), 8000);
    EXPECT_EQ(group()->getDuration(), 8000);
    EXPECT_FALSE(mask()->throttle());
    makePlayer(false);
    const Calls calls = setUp(longer, shorter, true);
    EXPECT_EQ(baseTrack()->getDuration(), 8000);
    EXPECT_EQ(mixTrack()->getDuration(), 8000);
    EXPECT_FALSE(mask()->throttle());
    EXPECT_EQ(matte()->getDuration(), 8000);
    EXPECT_EQ(group()->getDuration(), 8000);
    EXPECT_EQ(player().getDuration(), 8000);
    const Calls expected{"RvITrack::setDuration(base, 8000)",
                         "RvITrack::setDuration(mix, 8000)",
                         "RvITrack::setDuration(matte, 8000)",
                         "RvKpGroup::setDuration(group, 8000)",
                         "RvKpPlayer::prepareAsync()",
                         "RvTrkMatteEffectTrack::setMatteCenter(matte, 960, 540)"};
    EXPECT_EQ(Calls(calls.end() - 6, calls.end()), expected);
    // Every move of the line moves the matte.
    RvCallLog::start();
    press(*mask(), {480, 20});
    for (int x = 481; x <= 500; ++x)
        move(*mask(), {x, 20});
    EXPECT_EQ(RvCallLog::count(), 20U);
    release(*mask(), {500, 20});
    EXPECT_EQ(RvCallLog::count(), 21U);
}

TEST_F(ComparePlayerTest, TakesFilesAsWhatTheyAreWhenTheyAreNotWhatWasSaid)
{
    const QString picture = PlayerMedia::picture(Qt::green, 64, 36);
    const auto isVideo = [](const FrameworkRef<RvITrack>& track) {
        return dynamic_cast<RvKpTrack*>(track.get()) != nullptr;
    };
    Calls calls = setUp(picture, picture, true);
    EXPECT_FALSE(isVideo(baseTrack()));
    EXPECT_FALSE(isVideo(mixTrack()));
    EXPECT_EQ(calls[3], "RvKpTrack::create(\"" + picture.toStdString() + "\", 0, -1, 0) -> null");
    EXPECT_EQ(calls.size(), 24U) << "the second file is taken as the first one was at once";
    calls = setUp(m_red, m_blue, false);
    EXPECT_TRUE(isVideo(baseTrack()));
    EXPECT_TRUE(isVideo(mixTrack()));
    EXPECT_EQ(calls[11], "RvITrack::setVolumeAtTime(mix, 0, 0)");
    calls = setUp(picture, m_blue, true);
    EXPECT_TRUE(isVideo(baseTrack()));
    EXPECT_FALSE(isVideo(mixTrack()));
    calls = setUp(m_red, picture, true);
    EXPECT_FALSE(isVideo(baseTrack()));
    EXPECT_TRUE(isVideo(mixTrack()));
    EXPECT_EQ(baseTrack()->getDuration(), 3000);
    EXPECT_EQ(mixTrack()->getDuration(), 3000);
}

TEST_F(ComparePlayerTest, FindsFilesForWhoseNamesTheLocaleHasNoLetters)
{
    ASSERT_TRUE(m_red.contains("颜色"));
    const ScopedPathEncoding latin("ISO-8859-1");
    showPair(m_red, m_blue, true);
    EXPECT_EQ(widget->getVideoTrackSize(), QSizeF(320, 180));
}

TEST_F(ComparePlayerTest, KeepsWhatItShowedWhenAFileCannotBeRead)
{
    showPair(m_red, m_blue, true);
    const auto before = timeline();
    const long long living = RvRef::liveCount();
    dragLineTo(600);
    player().seekTo(400, true);
    const QString text = PlayerMedia::text();
    for (const auto& [first, second] :
         {std::pair(m_red, text), std::pair(text, m_blue), std::pair(text, text)}) {
        for (const bool isVideo : {true, false}) {
            widget->setupCompareVideoPath(first, second, isVideo);
            ASSERT_EQ(timeline(), before);
            EXPECT_EQ(RvRef::liveCount(), living);
            EXPECT_TRUE(reaches(RvKpPlayerPrepared));
            EXPECT_EQ(player().getCurrentPosition(), 400);
            EXPECT_EQ(widget->getVideoTrackSize(), QSizeF(320, 180));
        }
    }
    EXPECT_EQ(matte()->getMatteCenterX(), 1200.0F);
    dragLineTo(500);
    EXPECT_EQ(matte()->getMatteCenterX(), 1000.0F);
}

TEST_F(ComparePlayerTest, PlaysOnWhenAFileCannotBeRead)
{
    const QString longer = PlayerMedia::blue(64, 36, 8.0);
    showPair(longer, longer, true);
    player().start();
    player().seekTo(3000, true);
    widget->setupCompareVideoPath(longer, PlayerMedia::text(), true);
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    EXPECT_TRUE(QTest::qWaitFor([&] { return player().getCurrentPosition() > 3200; }, PatienceMs));
    EXPECT_LT(player().getCurrentPosition(), 8000);
}

TEST_F(ComparePlayerTest, AFailureAtFirstLeavesThePlayerWithoutATimeline)
{
    widget->setupCompareVideoPath(PlayerMedia::text(), m_blue, true);
    EXPECT_FALSE(timeline());
    EXPECT_EQ(player().getState(), RvKpPlayerIdle);
    EXPECT_EQ(widget->getVideoTrackSize(), QSizeF());
}

TEST_F(ComparePlayerTest, CanBeSetUpAgain)
{
    showPair(m_red, m_blue, true);
    const auto before = timeline();
    const auto matteBefore = matte();
    showPair(PlayerMedia::red(64, 36, 5.0), PlayerMedia::blue(64, 36, 5.0), true);
    EXPECT_NE(timeline(), before);
    EXPECT_EQ(widget->getVideoTrackSize(), QSizeF(64, 36));
    dragLineTo(600);
    EXPECT_EQ(matte()->getMatteCenterX(), 1200.0F);
    EXPECT_EQ(matteBefore->getMatteCenterX(), 960.0F);
}

TEST_F(ComparePlayerTest, ShowsBothVideosFromALaterTimeOn)
{
    EXPECT_FALSE(widget->setVideoFileStartTimeTo(100, 500)) << "nothing is shown";
    showPair(m_red, m_blue, true);
    EXPECT_TRUE(widget->setVideoFileStartTimeTo(100, 500));
    EXPECT_EQ(dynamic_cast<RvKpTrack&>(*baseTrack()).getFileStartTime(), 100);
    EXPECT_EQ(dynamic_cast<RvKpTrack&>(*mixTrack()).getFileStartTime(), 100);
    EXPECT_EQ(baseTrack()->getDuration(), 500);
    EXPECT_EQ(group()->getDuration(), 500);
    EXPECT_EQ(mixTrack()->getDuration(), 1000) << "which stays";
    const QString picture = PlayerMedia::picture(Qt::green, 64, 36);
    for (const auto& [first, second] :
         {std::pair(picture, m_blue), std::pair(m_red, picture), std::pair(picture, picture)}) {
        showPair(first, second, true);
        RvCallLog::start();
        EXPECT_FALSE(widget->setVideoFileStartTimeTo(100, 500));
        EXPECT_EQ(RvCallLog::count(), 0U);
    }
}

TEST_F(ComparePlayerTest, LaysOutTheHintsInWhatIsSeenOfTheCanvas)
{
    showPair(m_red, m_blue, true);
    application.setCanvasScale(0.5F);
    widget->updateEffect();
    EXPECT_EQ(mask()->limitRect(), QRect(239, 0, 480, 540));
    EXPECT_EQ(mask()->hintRect(), QRect(0, 0, 960, 540));
    application.setCanvasScale(2.0F);
    widget->updateEffect();
    EXPECT_EQ(mask()->limitRect(), QRect(-480, 0, 1921, 540));
    EXPECT_EQ(mask()->hintRect(), QRect(0, 0, 960, 540));
    for (const float scale : {1e-30F, 1e30F, std::numeric_limits<float>::max()}) {
        application.setCanvasScale(scale);
        widget->updateEffect();
        EXPECT_GE(mask()->lineX(), -1e6);
        EXPECT_LE(mask()->lineX(), 1e6);
    }
}
