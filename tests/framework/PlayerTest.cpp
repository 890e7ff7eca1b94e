// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Reference.h"

#include <rvkpcore/RvKpApplication.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

using namespace qrvkp;
using namespace std::chrono_literals;

namespace {

constexpr long long longest = std::numeric_limits<long long>::max();
/// What a loaded machine may need for anything.
constexpr int patienceMs = 120000;
/// Long enough for several ticks, when a test says that there are none.
constexpr int quietMs = 200;

using States = std::vector<int>;

Reference<RvKpTimeLine> timelineOf(long long duration)
{
    auto timeline = adopt(RvKpTimeLine::create());
    timeline->pushBackGroup(adopt(RvKpGroup::create(duration)).get());
    return timeline;
}

/// A player, what it says, and a timeline of a minute that it does not have yet.
class PlayerTest : public testing::Test
{
protected:
    /// The states of the signals since the last call.
    States takeStates()
    {
        States states;
        for (const auto& arguments : m_states)
            states.push_back(arguments.at(0).toInt());
        m_states.clear();
        return states;
    }

    /// The positions of the signals since the last call.
    std::vector<long long> takePositions()
    {
        std::vector<long long> positions;
        for (const auto& arguments : m_positions)
            positions.push_back(arguments.at(0).toLongLong());
        m_positions.clear();
        return positions;
    }

    /// Plays `duration` ms of a new timeline.
    void play(long long duration)
    {
        m_player->setTimeLine(timelineOf(duration).get());
        m_player->prepareAsync();
        m_player->start();
        ASSERT_TRUE(reaches(RvKpPlayerPlaying));
        takeStates();
    }

    bool reaches(int state)
    {
        return QTest::qWaitFor([&] { return m_player->getState() == state; }, patienceMs);
    }

    void expectQuiet()
    {
        m_positions.clear();
        EXPECT_FALSE(m_positions.wait(quietMs));
    }

    /// The last pictures tell this position, and then nothing is told any more.
    void expectStandsAt(long long position)
    {
        constexpr int mostPictures = 5;
        takePositions();
        int pictures = 0;
        while (pictures <= mostPictures && m_positions.wait(quietMs)) {
            for (const long long told : takePositions()) {
                EXPECT_EQ(told, position);
                ++pictures;
            }
        }
        EXPECT_LE(pictures, mostPictures);
        EXPECT_EQ(m_player->getCurrentPosition(), position);
    }

    bool tells(long long position)
    {
        return QTest::qWaitFor(
            [&] {
                const auto told = takePositions();
                return std::find(told.begin(), told.end(), position) != told.end();
            },
            patienceMs);
    }

    std::unique_ptr<RvKpApplication> m_application = std::make_unique<RvKpApplication>();
    RvKpPlayer* m_player = m_application->getPlayer();
    QSignalSpy m_states{m_player, &RvKpPlayer::sigStateChanged};
    QSignalSpy m_positions{m_player, &RvKpPlayer::sigRenderTimeChanged};
    const Reference<RvKpTimeLine> m_minute = timelineOf(60000);
};

} // namespace

TEST_F(PlayerTest, BelongsToItsApplication)
{
    ASSERT_NE(m_player, nullptr);
    EXPECT_EQ(m_application->getPlayer(), m_player);
}

TEST_F(PlayerTest, StartsIdleWithoutATimeline)
{
    EXPECT_EQ(m_player->getState(), RvKpPlayerIdle);
    EXPECT_EQ(m_player->getTimeLine(), nullptr);
    EXPECT_EQ(m_player->getDuration(), 0);
    EXPECT_EQ(m_player->getCurrentPosition(), 0);
    EXPECT_FALSE(m_player->isPlaying());
    EXPECT_FALSE(m_player->isPaused());
    EXPECT_FALSE(m_player->getSaveMode());
}

TEST_F(PlayerTest, DoesNothingWithoutATimeline)
{
    m_player->prepareAsync();
    m_player->start();
    m_player->pause();
    m_player->stop();
    m_player->setTimeLine(nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_player->getState(), RvKpPlayerIdle);
    EXPECT_EQ(takeStates(), States());
}

TEST_F(PlayerTest, HasTheNumbersOfItsStates)
{
    EXPECT_EQ(RvKpPlayerIdle, 0);
    EXPECT_EQ(RvKpPlayerPreparing, 1);
    EXPECT_EQ(RvKpPlayerPrepared, 2);
    EXPECT_EQ(RvKpPlayerPlaying, 4);
    EXPECT_EQ(RvKpPlayerPaused, 5);
    EXPECT_EQ(RvKpPlayerStopped, 6);
    EXPECT_EQ(RvKpPlayerCompleted, 7);
}

TEST_F(PlayerTest, GivesItsTimelineWithOneMoreReference)
{
    m_player->setTimeLine(m_minute.get());
    EXPECT_EQ(m_minute->referenceCount(), 2);
    {
        const auto timeline = adopt(m_player->getTimeLine());
        EXPECT_EQ(timeline, m_minute);
        EXPECT_EQ(m_minute->referenceCount(), 3);
    }
    EXPECT_EQ(m_minute->referenceCount(), 2);
    EXPECT_EQ(m_player->getDuration(), 60000);
}

TEST_F(PlayerTest, ReleasesTheTimelineThatIsTakenAwayOrReplaced)
{
    m_player->setTimeLine(m_minute.get());
    m_player->setTimeLine(m_minute.get());
    EXPECT_EQ(m_minute->referenceCount(), 2);
    const auto other = timelineOf(5);
    m_player->setTimeLine(other.get());
    EXPECT_EQ(m_minute->referenceCount(), 1);
    EXPECT_EQ(m_player->getDuration(), 5);
    m_player->setTimeLine(nullptr);
    EXPECT_EQ(other->referenceCount(), 1);
    EXPECT_EQ(m_player->getTimeLine(), nullptr);
    EXPECT_EQ(m_player->getDuration(), 0);
}

TEST_F(PlayerTest, HoldsItsTimelineUntilTheApplicationIsGone)
{
    m_player->setTimeLine(m_minute.get());
    m_application.reset();
    EXPECT_EQ(m_minute->referenceCount(), 1);
}

TEST_F(PlayerTest, IsPreparingAtOnceAndPreparedFromTheEventLoop)
{
    m_player->setTimeLine(m_minute.get());
    EXPECT_EQ(takeStates(), States());
    m_player->prepareAsync();
    EXPECT_EQ(m_player->getState(), RvKpPlayerPreparing);
    EXPECT_EQ(takeStates(), States{RvKpPlayerPreparing});
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    EXPECT_EQ(takeStates(), States{RvKpPlayerPrepared});
    expectStandsAt(0);
}

TEST_F(PlayerTest, GoesThroughItsStatesInOrder)
{
    m_player->setTimeLine(m_minute.get());
    m_player->prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    m_player->start();
    EXPECT_TRUE(m_player->isPlaying());
    m_player->pause();
    EXPECT_TRUE(m_player->isPaused());
    EXPECT_FALSE(m_player->isPlaying());
    m_player->start();
    EXPECT_FALSE(m_player->isPaused());
    m_player->stop();
    EXPECT_EQ(m_player->getState(), RvKpPlayerStopped);
    m_player->setTimeLine(nullptr);
    EXPECT_EQ(takeStates(), (States{1, 2, 4, 5, 4, 6, 0}));
}

TEST_F(PlayerTest, SignalsAStateAfterItChangedAndWithItsName)
{
    QStringList texts;
    States seen;
    QObject::connect(m_player, &RvKpPlayer::sigStateChanged, [&](int, const QString& text) {
        texts += text;
        seen.push_back(m_player->getState());
    });
    play(100);
    m_player->pause();
    m_player->start();
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    m_player->stop();
    m_player->setTimeLine(nullptr);
    EXPECT_EQ(texts, (QStringList{"preparing", "prepared", "playing", "paused", "playing",
                                  "completed", "stopped", "idle"}));
    EXPECT_EQ(seen, (States{1, 2, 4, 5, 4, 7, 6, 0}));
}

TEST_F(PlayerTest, AStartWhilePreparingTakesEffectOncePrepared)
{
    m_player->setTimeLine(m_minute.get());
    m_player->prepareAsync();
    m_player->start();
    EXPECT_EQ(m_player->getState(), RvKpPlayerPreparing);
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    EXPECT_EQ(takeStates(), (States{1, 2, 4}));
}

TEST_F(PlayerTest, DoesNotStartBeforeItIsPrepared)
{
    m_player->setTimeLine(m_minute.get());
    m_player->start();
    EXPECT_EQ(m_player->getState(), RvKpPlayerIdle);
    m_player->prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    QCoreApplication::processEvents();
    EXPECT_EQ(takeStates(), (States{1, 2})) << "the start while idle is forgotten";

    m_player->stop();
    takeStates();
    m_player->start();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_player->getState(), RvKpPlayerStopped);
    EXPECT_EQ(takeStates(), States());
}

TEST_F(PlayerTest, IsPreparedOnceHoweverOftenItIsAskedMeanwhile)
{
    m_player->setTimeLine(m_minute.get());
    m_player->prepareAsync();
    m_player->prepareAsync();
    m_player->start();
    m_player->prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    QCoreApplication::processEvents();
    EXPECT_EQ(takeStates(), (States{1, 2, 4}));
}

TEST_F(PlayerTest, StoppingWhilePreparingEndsThePreparation)
{
    m_player->setTimeLine(m_minute.get());
    m_player->prepareAsync();
    m_player->start();
    m_player->stop();
    QCoreApplication::processEvents();
    EXPECT_EQ(takeStates(), (States{1, 6}));

    m_player->prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    QCoreApplication::processEvents();
    EXPECT_EQ(takeStates(), (States{1, 2})) << "the start before the stop is forgotten";
}

TEST_F(PlayerTest, TakingTheTimelineAwayWhilePreparingEndsThePreparation)
{
    m_player->setTimeLine(m_minute.get());
    m_player->prepareAsync();
    m_player->start();
    m_player->setTimeLine(nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(takeStates(), (States{1, 6, 0}));
}

TEST_F(PlayerTest, ANewTimelineStopsThePlayerAndLeavesItIdleAtTheBeginning)
{
    play(60000);
    m_player->seekTo(30000, true);
    m_player->setTimeLine(m_minute.get());
    EXPECT_EQ(takeStates(), (States{6, 0}));
    EXPECT_EQ(m_player->getCurrentPosition(), 0);
    expectQuiet();
}

TEST_F(PlayerTest, ANewTimelineForgetsASeekWhileIdleOrStopped)
{
    m_player->setTimeLine(m_minute.get());
    m_player->seekTo(30000, true);
    m_player->setTimeLine(timelineOf(10).get());
    EXPECT_EQ(m_player->getCurrentPosition(), 0);

    play(60000);
    m_player->stop();
    m_player->seekTo(30000, true);
    m_player->setTimeLine(nullptr);
    EXPECT_EQ(m_player->getCurrentPosition(), 0);
}

TEST_F(PlayerTest, ThePositionFollowsTheWallClock)
{
    m_player->setTimeLine(m_minute.get());
    m_player->prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    QElapsedTimer sinceBefore;
    QElapsedTimer sinceAfter;
    sinceBefore.start();
    m_player->start();
    sinceAfter.start();
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(m_positions.wait(patienceMs));
        // A ms for each clock that counts whole ones.
        const long long atLeast = sinceAfter.elapsed() - 1;
        const long long position = m_player->getCurrentPosition();
        const long long atMost = sinceBefore.elapsed() + 1;
        EXPECT_GE(position, atLeast);
        EXPECT_LE(position, atMost);
    }
    const auto positions = takePositions();
    EXPECT_TRUE(std::is_sorted(positions.begin(), positions.end()));
    EXPECT_GT(positions.back(), positions.front());
}

TEST_F(PlayerTest, APausedPlayerStandsStillAndGoesOnFromThere)
{
    play(60000);
    ASSERT_TRUE(m_positions.wait(patienceMs));
    m_player->pause();
    const long long position = m_player->getCurrentPosition();
    EXPECT_GT(position, 0);
    expectStandsAt(position);

    QElapsedTimer sinceStart;
    sinceStart.start();
    m_player->start();
    ASSERT_TRUE(m_positions.wait(patienceMs));
    EXPECT_GE(takePositions().front(), position);
    EXPECT_LE(m_player->getCurrentPosition(), position + sinceStart.elapsed() + 1);
}

TEST_F(PlayerTest, PlaysToTheEndAndIsCompletedThere)
{
    play(150);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(takeStates(), States{RvKpPlayerCompleted});
    EXPECT_EQ(m_player->getCurrentPosition(), 150);
    const auto positions = takePositions();
    EXPECT_EQ(positions.back(), 150);
    EXPECT_TRUE(std::is_sorted(positions.begin(), positions.end()));
    EXPECT_FALSE(m_player->isPlaying());
    expectStandsAt(150);
}

TEST_F(PlayerTest, AnEmptyTimelineIsCompletedAtOnce)
{
    m_player->setTimeLine(adopt(RvKpTimeLine::create()).get());
    m_player->prepareAsync();
    m_player->start();
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(takeStates(), (States{1, 2, 4, 7}));
    EXPECT_EQ(m_player->getCurrentPosition(), 0);
}

TEST_F(PlayerTest, ACompletedPlayerStartsFromTheBeginning)
{
    play(120);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    takePositions();
    m_player->start();
    EXPECT_TRUE(m_player->isPlaying());
    EXPECT_LT(m_player->getCurrentPosition(), 120);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(takeStates(), (States{7, 4, 7}));
}

TEST_F(PlayerTest, ACompletedPlayerThatIsPreparedAgainStartsFromTheBeginning)
{
    play(120);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    m_player->prepareAsync();
    EXPECT_EQ(m_player->getCurrentPosition(), 0);
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    EXPECT_EQ(m_player->getCurrentPosition(), 0);
}

TEST_F(PlayerTest, PreparingAPlayingPlayerKeepsItsPosition)
{
    play(60000);
    ASSERT_TRUE(m_positions.wait(patienceMs));
    const long long before = m_player->getCurrentPosition();
    m_player->prepareAsync();
    const long long position = m_player->getCurrentPosition();
    EXPECT_GE(position, before);
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    EXPECT_EQ(m_player->getCurrentPosition(), position);
    EXPECT_EQ(takeStates(), (States{1, 2}));
}

TEST_F(PlayerTest, StoppingGoesBackToTheBeginning)
{
    play(60000);
    m_player->seekTo(30000, true);
    m_player->stop();
    EXPECT_EQ(m_player->getCurrentPosition(), 0);
    m_player->seekTo(20000, true);
    EXPECT_EQ(m_player->getCurrentPosition(), 20000);
    EXPECT_EQ(takeStates(), (States{6, 1}));
    m_player->stop();
    EXPECT_EQ(m_player->getCurrentPosition(), 0);
    EXPECT_EQ(takeStates(), States{RvKpPlayerStopped});
    expectStandsAt(0);
    EXPECT_EQ(takeStates(), States());
}

TEST_F(PlayerTest, PausingAndStoppingTwiceSignalOnce)
{
    play(60000);
    m_player->pause();
    m_player->pause();
    m_player->stop();
    m_player->pause();
    m_player->stop();
    EXPECT_EQ(takeStates(), (States{5, 6}));
}

TEST_F(PlayerTest, ASeekIsClampedToTheTimelineAndSignalled)
{
    m_player->seekTo(100, true);
    EXPECT_EQ(m_player->getCurrentPosition(), 0) << "there is no timeline";
    m_player->setTimeLine(m_minute.get());
    takePositions();
    for (const long long position : {-1LL, -longest, 0LL, 123LL, 60000LL, 60001LL, longest}) {
        m_player->seekTo(position, position % 2 == 0);
        const long long clamped = std::clamp(position, 0LL, 60000LL);
        EXPECT_EQ(m_player->getCurrentPosition(), clamped);
        EXPECT_EQ(takePositions(), std::vector<long long>{clamped});
    }
    EXPECT_EQ(takeStates(), States());
}

TEST_F(PlayerTest, ASeekOfAPreparedPlayerPausesItThere)
{
    m_player->setTimeLine(m_minute.get());
    m_player->prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    takeStates();
    std::vector<long long> positions;
    QObject::connect(m_player, &RvKpPlayer::sigStateChanged,
                     [&] { positions.push_back(m_player->getCurrentPosition()); });
    m_player->seekTo(30000, true);
    EXPECT_EQ(takeStates(), States{RvKpPlayerPaused});
    EXPECT_EQ(positions, std::vector<long long>{30000}) << "it is there when it is paused";
    EXPECT_TRUE(m_player->isPaused());
    takePositions();
    m_player->start();
    EXPECT_TRUE(m_player->isPlaying());
    ASSERT_TRUE(m_positions.wait(patienceMs));
    EXPECT_GE(takePositions().front(), 30000);
}

TEST_F(PlayerTest, ASeekToWhereItIsPausesItToo)
{
    m_player->setTimeLine(m_minute.get());
    m_player->prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    takeStates();
    m_player->seekTo(0, true);
    EXPECT_EQ(takeStates(), States{RvKpPlayerPaused});
}

TEST_F(PlayerTest, ASeekOfACompletedPlayerPausesItThere)
{
    play(100);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    takeStates();
    m_player->seekTo(40, true);
    EXPECT_EQ(takeStates(), States{RvKpPlayerPaused});
    m_player->start();
    EXPECT_GE(m_player->getCurrentPosition(), 40);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(takeStates(), (States{4, 7}));
}

TEST_F(PlayerTest, ASeekOfAStoppedPlayerPreparesItAndPausesItThere)
{
    play(60000);
    m_player->stop();
    takeStates();
    m_player->seekTo(30000, true);
    EXPECT_EQ(m_player->getState(), RvKpPlayerPreparing);
    ASSERT_TRUE(reaches(RvKpPlayerPaused));
    EXPECT_EQ(takeStates(), (States{1, 2, 5}));
    expectStandsAt(30000);
    m_player->start();
    EXPECT_TRUE(m_player->isPlaying());
    EXPECT_GE(m_player->getCurrentPosition(), 30000);
}

TEST_F(PlayerTest, WhatIsAskedAfterASeekOfAStoppedPlayerHolds)
{
    const auto statesAfter = [this](const std::function<void()>& ask) {
        play(60000);
        m_player->stop();
        takeStates();
        m_player->seekTo(30000, true);
        ask();
        QCoreApplication::processEvents();
        return takeStates();
    };
    EXPECT_EQ(statesAfter([this] { m_player->prepareAsync(); }), (States{1, 2}));
    EXPECT_EQ(m_player->getCurrentPosition(), 30000);
    EXPECT_EQ(statesAfter([this] { m_player->start(); }), (States{1, 2, 4}));
    EXPECT_GE(m_player->getCurrentPosition(), 30000);
    EXPECT_EQ(statesAfter([this] { m_player->stop(); }), (States{1, 6}));
    EXPECT_EQ(m_player->getCurrentPosition(), 0);
    m_player->prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    QCoreApplication::processEvents();
    EXPECT_EQ(takeStates(), (States{1, 2})) << "the seek before the stop is forgotten";
}

TEST_F(PlayerTest, AReceiverThatStartsItWhenItIsPreparedKeepsItPlaying)
{
    play(60000);
    m_player->stop();
    QObject::connect(m_player, &RvKpPlayer::sigStateChanged, [this](int state) {
        if (state == RvKpPlayerPrepared)
            m_player->start();
    });
    m_player->seekTo(30000, true);
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_player->isPlaying());
}

TEST_F(PlayerTest, ASeekLeavesEveryOtherStateAsItIs)
{
    m_player->setTimeLine(m_minute.get());
    m_player->seekTo(1000, true);
    EXPECT_EQ(m_player->getState(), RvKpPlayerIdle);
    m_player->prepareAsync();
    m_player->seekTo(2000, true);
    EXPECT_EQ(m_player->getState(), RvKpPlayerPreparing);
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    QCoreApplication::processEvents();
    EXPECT_EQ(takeStates(), (States{1, 2}));
    EXPECT_EQ(m_player->getCurrentPosition(), 2000);
    m_player->start();
    m_player->seekTo(3000, true);
    m_player->pause();
    m_player->seekTo(4000, true);
    QCoreApplication::processEvents();
    EXPECT_EQ(takeStates(), (States{4, 5}));
}

TEST_F(PlayerTest, TellsThePositionWhenItIsPreparedAndAfterEveryEditWhileItStands)
{
    const auto timeline = timelineOf(14000);
    const auto group = std::move(adopt(timeline->getGroups()).front());
    m_player->setTimeLine(timeline.get());
    EXPECT_EQ(takePositions(), std::vector<long long>{0}) << "the length is another one";
    m_player->seekTo(5000, true);
    takePositions();
    m_player->prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    EXPECT_TRUE(tells(5000)) << "prepared";
    expectStandsAt(5000);
    group->setDuration(20000);
    EXPECT_TRUE(tells(5000)) << "prepared, and longer";
    m_player->start();
    m_player->pause();
    m_player->seekTo(9000, true);
    expectStandsAt(9000);
    group->setDuration(8000);
    EXPECT_TRUE(tells(8000)) << "paused behind the end";
    EXPECT_EQ(m_player->getCurrentPosition(), 8000);
    m_player->stop();
    expectStandsAt(0);
    group->setDuration(1000);
    EXPECT_TRUE(tells(0)) << "stopped, and shorter";
    m_player->prepareAsync();
    m_player->start();
    m_player->seekTo(1000, true);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    expectStandsAt(1000);
    group->setDuration(500);
    EXPECT_TRUE(tells(500)) << "completed, and shorter";
    EXPECT_EQ(m_player->getState(), RvKpPlayerCompleted);
    takePositions();
    m_player->setTimeLine(nullptr);
    EXPECT_EQ(takePositions(), std::vector<long long>{0});
}

TEST_F(PlayerTest, APausedPlayerStartsFromWhereItWasSoughtTo)
{
    play(60000);
    m_player->pause();
    m_player->seekTo(30000, true);
    EXPECT_EQ(m_player->getCurrentPosition(), 30000);
    EXPECT_TRUE(m_player->isPaused());
    takePositions();
    m_player->start();
    ASSERT_TRUE(m_positions.wait(patienceMs));
    EXPECT_GE(takePositions().front(), 30000);
}

TEST_F(PlayerTest, APlayingPlayerGoesOnFromWhereItWasSoughtTo)
{
    play(60000);
    QElapsedTimer sinceSeek;
    sinceSeek.start();
    m_player->seekTo(30000, false);
    ASSERT_TRUE(m_positions.wait(patienceMs));
    const long long position = m_player->getCurrentPosition();
    EXPECT_GE(position, 30000);
    EXPECT_LE(position, 30000 + sinceSeek.elapsed() + 1);
    m_player->seekTo(0, true);
    EXPECT_LT(m_player->getCurrentPosition(), 30000);
    EXPECT_TRUE(m_player->isPlaying());
}

TEST_F(PlayerTest, AReceiverThatSeeksBackAtTheEndKeepsItPlaying)
{
    int rounds = 0;
    QObject::connect(m_player, &RvKpPlayer::sigRenderTimeChanged, [&](long long position) {
        if (m_player->isPlaying() && position == 100 && ++rounds < 3)
            m_player->seekTo(0, true);
    });
    play(100);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(rounds, 3);
    EXPECT_EQ(takeStates(), States{RvKpPlayerCompleted});
}

TEST_F(PlayerTest, AReceiverMayStopItAtTheEnd)
{
    QObject::connect(m_player, &RvKpPlayer::sigRenderTimeChanged, [&](long long position) {
        if (position == 100)
            m_player->stop();
    });
    play(100);
    ASSERT_TRUE(reaches(RvKpPlayerStopped));
    expectStandsAt(0);
    EXPECT_EQ(takeStates(), States{RvKpPlayerStopped});
}

TEST_F(PlayerTest, IsCompletedWhenTheTimelineBecomesShorterThanWhatWasPlayed)
{
    const auto timeline = timelineOf(60000);
    m_player->setTimeLine(timeline.get());
    m_player->prepareAsync();
    m_player->seekTo(30000, true);
    m_player->start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    adopt(timeline->getGroups())[0]->setDuration(10);
    EXPECT_EQ(m_player->getCurrentPosition(), 10);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(m_player->getCurrentPosition(), 10);
}

TEST_F(PlayerTest, PlaysTheEndOfTheLongestTimeline)
{
    play(longest);
    m_player->seekTo(longest - 100, true);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(m_player->getCurrentPosition(), longest);
}

TEST_F(PlayerTest, IsPausedByAReceiverOfItsOwnSignals)
{
    QObject::connect(m_player, &RvKpPlayer::sigStateChanged, [&](int state) {
        if (state == RvKpPlayerPlaying)
            m_player->pause();
    });
    m_player->setTimeLine(m_minute.get());
    m_player->prepareAsync();
    m_player->start();
    ASSERT_TRUE(reaches(RvKpPlayerPaused));
    expectStandsAt(m_player->getCurrentPosition());
}

namespace {

/// Locks and unlocks a player in a thread of its own.
class OtherThread
{
public:
    explicit OtherThread(RvKpPlayer* player)
        : m_thread([this, player] {
            m_started.set_value();
            player->lockPlayer();
            m_locked.set_value();
            m_letGo.get_future().wait();
            player->unlockPlayer();
        })
    {
        m_started.get_future().wait();
    }
    ~OtherThread() { unlock(); }

    bool locksWithin(std::chrono::milliseconds time) const
    {
        return m_isLocked.wait_for(time) == std::future_status::ready;
    }

    void unlock()
    {
        if (!m_thread.joinable())
            return;
        m_letGo.set_value();
        m_thread.join();
    }

private:
    std::promise<void> m_started;
    std::promise<void> m_locked;
    std::promise<void> m_letGo;
    std::future<void> m_isLocked = m_locked.get_future();
    std::thread m_thread;
};

} // namespace

TEST_F(PlayerTest, ALockHoldsOffAnotherThreadUntilItIsUnlockedAsOften)
{
    m_player->lockPlayer();
    m_player->lockPlayer();
    OtherThread other(m_player);
    EXPECT_FALSE(other.locksWithin(100ms));
    m_player->unlockPlayer();
    EXPECT_FALSE(other.locksWithin(100ms));
    m_player->unlockPlayer();
    EXPECT_TRUE(other.locksWithin(std::chrono::milliseconds(patienceMs)));
}

TEST_F(PlayerTest, SignalsNothingWhileAnotherThreadHoldsTheLock)
{
    play(60000);
    ASSERT_TRUE(m_positions.wait(patienceMs));
    OtherThread other(m_player);
    ASSERT_TRUE(other.locksWithin(std::chrono::milliseconds(patienceMs)));
    expectQuiet();
    EXPECT_TRUE(m_player->isPlaying());
    const long long position = m_player->getCurrentPosition();
    other.unlock();
    ASSERT_TRUE(m_positions.wait(patienceMs));
    EXPECT_GE(takePositions().front(), position) << "the clock went on under the lock";
}

TEST_F(PlayerTest, SignalsNothingWhileItsOwnThreadHoldsTheLock)
{
    play(60000);
    m_player->lockPlayer();
    m_player->lockPlayer();
    expectQuiet();
    m_player->unlockPlayer();
    expectQuiet();
    m_player->unlockPlayer();
    EXPECT_TRUE(m_positions.wait(patienceMs));
}

TEST_F(PlayerTest, IsNotCompletedUnderALock)
{
    play(60);
    m_player->lockPlayer();
    expectQuiet();
    EXPECT_EQ(takeStates(), States());
    m_player->unlockPlayer();
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(m_player->getCurrentPosition(), 60);
}

TEST_F(PlayerTest, AReceiverMayLockThePlayer)
{
    int received = 0;
    QObject::connect(m_player, &RvKpPlayer::sigRenderTimeChanged, [&] {
        m_player->lockPlayer();
        ++received;
        m_player->unlockPlayer();
    });
    play(100);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_GT(received, 0);
    const OtherThread other(m_player);
    EXPECT_TRUE(other.locksWithin(std::chrono::milliseconds(patienceMs)));
}

TEST_F(PlayerTest, GivesItsTimelineToOtherThreadsWhileItIsReplaced)
{
    std::atomic<bool> done{false};
    std::vector<std::thread> readers;
    for (int i = 0; i < 2; ++i) {
        readers.emplace_back([&] {
            while (!done)
                adopt(m_player->getTimeLine());
        });
    }
    for (int round = 0; round < 2000; ++round) {
        m_player->setTimeLine(timelineOf(round).get());
        if (round % 3 == 0)
            m_player->setTimeLine(nullptr);
    }
    done = true;
    for (std::thread& reader : readers)
        reader.join();
}
