// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"

#include <norvel/widgets/systemstatus/systemstatus.h>

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace {

/// The longest time between two rounds of the event loop, seen by a timer of 1 ms.
class GapWatch
{
public:
    GapWatch()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            longestMs = std::max(longestMs, static_cast<double>(m_time.nsecsElapsed()) / 1e6);
            m_time.start();
            ++rounds;
        });
        m_time.start();
        m_timer.start(1);
    }

    double longestMs = 0.0;
    int rounds = 0;

private:
    QTimer m_timer;
    QElapsedTimer m_time;
};

/// Unlike the waits of Qt Test, which sleep between their rounds.
void runEventLoop(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

TEST(GapWatchTest, SeesABlockedEventLoop)
{
    GapWatch watch;
    QTimer::singleShot(50, [] { QTest::qSleep(120); });
    runEventLoop(300);
    EXPECT_GE(watch.longestMs, 120.0);
}

TEST(StatusLatencyTest, SlowToolsDoNotHoldUpTheUserInterface)
{
    FakeTools tools;
    tools.answerAll();
    QWidget window;
    const systemstatus panel(&window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    tools.delayAll(1500);
    const int begunBefore = tools.begun().size();
    GapWatch watch;
    runEventLoop(10000);
    const double longestMs = watch.longestMs;
    std::printf("longest gap of the event loop in 10 s: %.1f ms, %d rounds\n", longestMs,
                watch.rounds);
    EXPECT_LT(longestMs, 50.0);
    EXPECT_GT(watch.rounds, 1000) << "the gaps are not seen";
    EXPECT_GE(tools.begun().size() - begunBefore, 4) << "nothing was measured meanwhile";
}
