// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/playback/PlayClock.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <limits>
#include <thread>
#include <utility>

using rvengine::PlayClock;

namespace {

using Time = std::chrono::steady_clock;

long long msSince(Time::time_point start)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Time::now() - start).count();
}

/// Waits until the clock has got to a position.
bool awaitPosition(const PlayClock& clock, long long position)
{
    const auto end = Time::now() + std::chrono::seconds(20);
    while (clock.position() < position) {
        if (Time::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace

TEST(PlayClockTest, StandsUntilItIsStarted)
{
    PlayClock clock;
    EXPECT_FALSE(clock.isRunning());
    EXPECT_EQ(clock.position(), 0);

    clock.set(1234);
    EXPECT_EQ(clock.position(), 1234);
    EXPECT_EQ(clock.run().start, 1234);
}

TEST(PlayClockTest, GoesByTheWallClock)
{
    PlayClock clock;
    clock.set(500);
    const auto before = Time::now();
    clock.start();
    const auto after = Time::now();
    EXPECT_TRUE(clock.isRunning());
    ASSERT_TRUE(awaitPosition(clock, 540));

    const long long least = msSince(after);
    const long long position = clock.position();
    EXPECT_GE(position, 500 + least);
    EXPECT_LE(position, 500 + msSince(before) + 1);
}

TEST(PlayClockTest, StaysWhereItWasStoppedAndGoesOnFromThere)
{
    PlayClock clock;
    clock.start();
    ASSERT_TRUE(awaitPosition(clock, 20));
    clock.stop();
    EXPECT_FALSE(clock.isRunning());
    const long long stopped = clock.position();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(clock.position(), stopped);

    clock.start();
    EXPECT_EQ(clock.run().start, stopped);
    EXPECT_TRUE(awaitPosition(clock, stopped + 10));
}

TEST(PlayClockTest, GoesOnRunningAfterAJump)
{
    PlayClock clock;
    clock.start();
    clock.set(10000);
    EXPECT_TRUE(clock.isRunning());
    EXPECT_TRUE(awaitPosition(clock, 10010));

    clock.set(-50);
    EXPECT_LT(clock.position(), 10000);
    EXPECT_TRUE(awaitPosition(clock, 0));
}

TEST(PlayClockTest, NumbersItsRunsAnew)
{
    PlayClock clock;
    std::uint64_t last = clock.run().number;
    const auto isNew = [&] {
        const std::uint64_t number = clock.run().number;
        return std::exchange(last, number) != number;
    };
    clock.start();
    EXPECT_TRUE(isNew());
    clock.start();
    EXPECT_FALSE(isNew());
    clock.set(10);
    EXPECT_TRUE(isNew());
    clock.stop();
    EXPECT_TRUE(isNew());
    clock.stop();
    EXPECT_FALSE(isNew());
}

TEST(PlayClockTest, IsCorrectedByWhatWasHeard)
{
    PlayClock clock;
    clock.set(1000);
    clock.start();
    clock.correct(clock.run().number, 700.0);

    EXPECT_GE(clock.position(), 1700);
    EXPECT_EQ(clock.run().start, 1000);
}

TEST(PlayClockTest, NeverGoesBackWhileItRuns)
{
    PlayClock clock;
    clock.start();
    ASSERT_TRUE(awaitPosition(clock, 30));
    const long long before = clock.position();
    clock.correct(clock.run().number, 0.0);

    const long long waiting = clock.position();
    EXPECT_GE(waiting, before);
    // It waits for the corrected time to get there, and goes on then.
    EXPECT_TRUE(awaitPosition(clock, before + 5));
}

TEST(PlayClockTest, IgnoresACorrectionOfAnotherRun)
{
    PlayClock clock;
    clock.start();
    const std::uint64_t before = clock.run().number;
    clock.set(0);
    clock.correct(before, 1e7);
    EXPECT_LT(clock.position(), 1e6);

    clock.stop();
    const long long stopped = clock.position();
    clock.correct(clock.run().number, 1e7);
    EXPECT_EQ(clock.position(), stopped);
}

TEST(PlayClockTest, DoesNotRunBeyondTheLastTime)
{
    constexpr long long last = std::numeric_limits<long long>::max();
    PlayClock clock;
    clock.set(last - 5);
    clock.start();

    EXPECT_TRUE(awaitPosition(clock, last));
    EXPECT_EQ(clock.position(), last);
}

TEST(PlayClockTest, IgnoresACorrectionThatIsNoTime)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    PlayClock clock;
    for (const double sinceStart :
         {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity, -1e300}) {
        clock.set(1000);
        clock.start();
        clock.correct(clock.run().number, sinceStart);
        EXPECT_GE(clock.position(), 1000) << sinceStart;
        EXPECT_LT(clock.position(), 60000) << sinceStart;
        clock.stop();
    }
}

TEST(PlayClockTest, DoesNotRunBeyondTheLastTimeByACorrection)
{
    constexpr long long last = std::numeric_limits<long long>::max();
    PlayClock clock;
    clock.set(last - 1000);
    clock.start();
    clock.correct(clock.run().number, 1e300);

    EXPECT_EQ(clock.position(), last);
}

TEST(PlayClockTest, RisesForEveryThread)
{
    PlayClock clock;
    clock.start();
    std::atomic<bool> isOver{false};
    std::atomic<int> steps{0};
    const auto watch = [&] {
        long long last = 0;
        while (!isOver) {
            const long long now = clock.position();
            steps += now < last ? 1 : 0;
            last = now;
        }
    };
    std::thread one(watch);
    std::thread two(watch);
    for (int i = 0; i < 200; ++i)
        clock.correct(clock.run().number, i % 2 == 0 ? 5.0 : 1.0);
    EXPECT_TRUE(awaitPosition(clock, 20));
    isOver = true;
    one.join();
    two.join();

    EXPECT_EQ(steps, 0) << "steps back";
}
