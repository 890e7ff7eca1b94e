// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayedTimeline.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <utility>
#include <vector>

using namespace qrvkp;
using namespace std::chrono_literals;

namespace {

class PlayerLockTest : public PlayedTimeline
{
protected:
    PlayerLockTest()
    {
        QObject::connect(&player(), &RvKpPlayer::sigPictureRendered,
                         [this](const QImage& picture) { m_pictures.push_back(picture); });
    }

    /// Runs an event loop of its own for long enough that several pictures would come.
    static void runNestedLoop()
    {
        QEventLoop loop;
        QTimer::singleShot(QuietMs, &loop, &QEventLoop::quit);
        loop.exec();
    }

    /// Calls `run` again and again in a thread, until that many pictures were shown.
    template <class Function>
    void inOtherThreadUntil(std::size_t pictures, const Function& run)
    {
        m_pictures.clear();
        std::atomic<bool> done{false};
        std::thread thread([&] {
            for (int round = 0; !done; ++round) {
                run(round);
                // One who locks it all the time leaves no time for a picture.
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_pictures.size() >= pictures; }, PatienceMs))
            << m_pictures.size();
        done = true;
        thread.join();
    }

    /// Edits as another thread may: only under the lock.
    template <class Function>
    void edit(const Function& change)
    {
        player().lockPlayer();
        change();
        player().unlockPlayer();
    }

    /// Keeps its thread busy: yielding takes for ever on a busy machine.
    static void spin(std::chrono::microseconds time)
    {
        const auto end = std::chrono::steady_clock::now() + time;
        while (std::chrono::steady_clock::now() < end) {
        }
    }

    /// Where the first pixel of that colour is in the middle row; -1 when there is none.
    static int columnOf(const QImage& picture, QRgb colour)
    {
        for (int x = 0; x < picture.width(); ++x) {
            if (isColour(picture.pixel(x, picture.height() / 2), colour))
                return x;
        }
        return -1;
    }

    std::vector<QImage> m_pictures; ///< that were shown
    const QPointF m_centre{160, 90};
};

} // namespace

TEST_F(PlayerLockTest, NothingNewIsSeenBeforeItIsUnlockedAndThenAllOfIt)
{
    appendColour(Green);
    const auto red = addColour(Red, {40, 40});
    const auto blue = addColour(Blue, {40, 40});
    blue->setPosition(260.0F, 90.0F);
    prepare();
    ASSERT_TRUE(becomes(m_centre, Red));
    runNestedLoop();
    const QImage before = grabbed();

    player().lockPlayer();
    m_pictures.clear();
    red->setPosition(60.0F, 90.0F);
    runNestedLoop();
    timeline->removeMixTrack(blue.get());
    player().seekTo(500, true);
    runNestedLoop();
    player().lockPlayer();
    player().unlockPlayer();
    runNestedLoop();
    EXPECT_EQ(grabbed(), before);
    EXPECT_TRUE(m_pictures.empty());
    player().unlockPlayer();

    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_pictures.empty(); }, PatienceMs));
    EXPECT_TRUE(isColour(seenAt({60, 90}), Red));
    EXPECT_TRUE(isColour(seenAt(m_centre), Green));
    EXPECT_TRUE(isColour(seenAt({260, 90}), Green));
}

TEST_F(PlayerLockTest, APlayingPictureStandsStillUnderTheLockAndGoesOnAfterIt)
{
    appendNumbers();
    prepareAndStart();
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_pictures.size() > 3; }, PatienceMs));
    for (int round = 0; round < 3; ++round) {
        player().lockPlayer();
        m_pictures.clear();
        const int number = seenNumber();
        runNestedLoop();
        EXPECT_EQ(seenNumber(), number);
        EXPECT_TRUE(m_pictures.empty());
        player().unlockPlayer();
        ASSERT_TRUE(QTest::qWaitFor([&] { return seenNumber() > number; }, PatienceMs));
    }
}

TEST_F(PlayerLockTest, AnEditAndASeekUnderTheLockAreSeenTogether)
{
    appendColour(Red, 1000);
    appendColour(Blue, 1000);
    const auto mark = addColour(White, {100, 100});
    prepare();
    ASSERT_TRUE(becomes(m_centre, White));
    m_pictures.clear();
    for (int round = 1; round <= 40; ++round) {
        const bool isLate = round % 2 == 1;
        edit([&] {
            player().seekTo(isLate ? 1500 : 500, true);
            mark->setPosition(isLate ? 60.0F : 160.0F, 90.0F);
        });
        // The host goes on for a while before its event loop runs again.
        std::this_thread::sleep_for(std::chrono::milliseconds(round));
        ASSERT_TRUE(becomes({300, 90}, isLate ? Blue : Red));
    }
    for (const QImage& picture : m_pictures) {
        const bool isLate = isColour(picture.pixel(300, 90), Blue);
        EXPECT_TRUE(isColour(picture.pixel(20, 90), isLate ? White : Red));
    }
}

TEST_F(PlayerLockTest, TracksThatAnotherThreadMovesTogetherAreNeverSeenApart)
{
    constexpr int distance = 100;
    appendColour(Green, 600000);
    const auto red = addColour(Red, {10, 180});
    const auto blue = addColour(Blue, {10, 180});
    red->setDuration(600000);
    blue->setDuration(600000);
    const auto moveTo = [&](int x) {
        red->setPosition(static_cast<float>(x), 90.0F);
        spin(100us);
        blue->setPosition(static_cast<float>(x + distance), 90.0F);
    };
    moveTo(20);
    prepareAndStart();
    inOtherThreadUntil(40, [&](int round) { edit([&] { moveTo(20 + round * 7 % 180); }); });
    edit([&] { moveTo(150); });
    EXPECT_TRUE(becomes({150, 90}, Red));
    EXPECT_TRUE(becomes({250, 90}, Blue));
    for (const QImage& picture : m_pictures) {
        const int column = columnOf(picture, Red);
        ASSERT_GE(column, 0);
        ASSERT_EQ(columnOf(picture, Blue), column + distance);
    }
}

TEST_F(PlayerLockTest, WhatAnotherThreadAddsAndTakesAwayTogetherIsSeenTogether)
{
    appendColour(Green, 600000);
    const auto red = addColour(Red, {10, 180});
    const auto blue = addColour(Blue, {10, 180});
    red->setPosition(20.0F, 90.0F);
    blue->setPosition(220.0F, 90.0F);
    prepareAndStart();
    const auto group = std::move(adopt(timeline->getGroups()).front());
    inOtherThreadUntil(40, [&](int) {
        edit([&] {
            timeline->removeMixTrack(red.get());
            timeline->removeMixTrack(blue.get());
            timeline->removeGroup(group.get());
        });
        edit([&] {
            timeline->insertGroup(group.get(), 0);
            timeline->addMixTrack(blue.get());
            timeline->addMixTrack(red.get());
        });
    });
    EXPECT_TRUE(becomes({20, 90}, Red));
    for (const QImage& picture : m_pictures) {
        const bool isThere = columnOf(picture, Red) >= 0;
        ASSERT_EQ(columnOf(picture, Blue) >= 0, isThere);
        ASSERT_TRUE(isColour(picture.pixel(m_centre.toPoint()), isThere ? Green : Black));
    }
}

TEST_F(PlayerLockTest, NoPictureIsLostWhenItIsUnlockedJustThen)
{
    appendColour(Green, 600000);
    const auto red = addColour(Red, {40, 40});
    prepare();
    ASSERT_TRUE(becomes(m_centre, Red));
    // Each unlock meets the event loop at another moment; what it makes is seen every time.
    for (int round = 0; round < 150; ++round) {
        const float alpha = round % 2 == 0 ? 0.0F : 1.0F;
        std::thread thread([&] {
            for (int i = 0; i < 20; ++i) {
                edit([&] { red->setAlpha(i == 19 ? alpha : 0.5F); });
                spin(round * 2us);
            }
        });
        const auto isSeen = [&] {
            return bool(isColour(seenAt(m_centre), alpha > 0 ? Red : Green));
        };
        EXPECT_TRUE(QTest::qWaitFor(isSeen, PatienceMs)) << "round " << round;
        thread.join();
    }
}

TEST_F(PlayerLockTest, WaitsForTheFrameInWork)
{
    // Enough to draw that a frame takes much longer than the way through the event loop.
    application->getRvKpConfig()->setKpSize(1280.0F, 720.0F);
    view().resize(1280, 720);
    appendColour(Green, 600000);
    for (int i = 0; i < 12; ++i) {
        const auto track = addColour(Red, {1200, 700});
        track->setDuration(600000);
        track->setRotation(static_cast<float>(i) * 3.0F + 1.0F);
        track->setAlpha(0.3F);
    }
    prepareAndStart();
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_pictures.size() >= 2; }, PatienceMs));
    QElapsedTimer timer;
    timer.start();
    const std::size_t before = m_pictures.size();
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_pictures.size() >= before + 4; }, PatienceMs));
    const qint64 frameMs = timer.elapsed() / 4;
    ASSERT_GT(frameMs, 30) << "the machine is too fast for this test";

    // The frames follow one another without a gap: a lock comes somewhere within one.
    qint64 longest = 0;
    for (int round = 0; round < 12; ++round) {
        const std::size_t shown = m_pictures.size();
        ASSERT_TRUE(QTest::qWaitFor([&] { return m_pictures.size() > shown; }, PatienceMs));
        timer.start();
        player().lockPlayer();
        longest = std::max(longest, timer.elapsed());
        player().unlockPlayer();
    }
    EXPECT_GT(longest, frameMs / 4);
}
