// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/playback/RenderGate.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

using rvengine::RenderGate;

namespace {

constexpr std::chrono::seconds Limit{120}; ///< only a hang takes as long

class RenderGateTest : public testing::Test
{
protected:
    /// Runs `work` in another thread and waits for what it gives.
    template <class Work>
    static auto elsewhere(Work&& work)
    {
        return std::async(std::launch::async, std::forward<Work>(work)).get();
    }

    /// Waits until the renderer is kept out though nobody can hold the gate, for a frame is in
    /// work: somebody waits for it.
    bool awaitThatSomebodyWaits()
    {
        const auto end = std::chrono::steady_clock::now() + Limit;
        while (std::chrono::steady_clock::now() < end) {
            if (!m_gate.tryEnter())
                return true;
            std::this_thread::yield();
        }
        return false;
    }

    RenderGate m_gate;
};

} // namespace

TEST_F(RenderGateTest, LetsTheRendererInWhileNobodyHoldsIt)
{
    EXPECT_FALSE(m_gate.isClosed());
    EXPECT_TRUE(m_gate.tryEnter());
    m_gate.leave();
    EXPECT_TRUE(m_gate.tryEnter());
    m_gate.leave();
}

TEST_F(RenderGateTest, KeepsTheRendererOutUntilTheLastHoldIsLetGo)
{
    m_gate.close();
    m_gate.close();
    EXPECT_TRUE(m_gate.isClosed());
    EXPECT_FALSE(elsewhere([this] { return m_gate.tryEnter(); }));

    EXPECT_FALSE(m_gate.open());
    EXPECT_FALSE(elsewhere([this] { return m_gate.tryEnter(); }));
    EXPECT_TRUE(m_gate.open());
    EXPECT_FALSE(m_gate.isClosed());
    EXPECT_TRUE(m_gate.tryEnter());
    m_gate.leave();
}

TEST_F(RenderGateTest, CannotBeOpenedWhenItIsNotClosed)
{
    EXPECT_FALSE(m_gate.open());
    EXPECT_FALSE(m_gate.isClosed());
    m_gate.close();
    EXPECT_TRUE(m_gate.open());
    EXPECT_FALSE(m_gate.open());
}

TEST_F(RenderGateTest, IsOpenedByItsHolderOnly)
{
    m_gate.close();

    EXPECT_FALSE(elsewhere([this] { return m_gate.open(); }));
    EXPECT_TRUE(m_gate.isClosed());
    EXPECT_TRUE(m_gate.open());
}

TEST_F(RenderGateTest, IsClosedByTryingUnlessAnybodyHoldsIt)
{
    EXPECT_TRUE(m_gate.tryClose());
    EXPECT_TRUE(m_gate.isClosed());
    EXPECT_FALSE(m_gate.tryClose());
    EXPECT_FALSE(elsewhere([this] { return m_gate.tryClose(); }));
    EXPECT_TRUE(m_gate.open());

    m_gate.close();
    EXPECT_FALSE(m_gate.tryClose());
    EXPECT_TRUE(m_gate.open());
}

TEST_F(RenderGateTest, IsClosedByTryingWhileAFrameIsInWork)
{
    ASSERT_TRUE(m_gate.tryEnter());
    EXPECT_TRUE(elsewhere([this] {
        const bool closed = m_gate.tryClose();
        EXPECT_TRUE(m_gate.open());
        return closed;
    }));
    m_gate.leave();
}

TEST_F(RenderGateTest, WaitsForTheFrameInWork)
{
    ASSERT_TRUE(m_gate.tryEnter());
    std::atomic<bool> finished{false};
    std::atomic<bool> closing{false};
    auto closer = std::async(std::launch::async, [&] {
        closing = true;
        m_gate.close();
        const bool afterTheFrame = finished;
        m_gate.open();
        return afterTheFrame;
    });
    while (!closing)
        std::this_thread::yield();
    finished = true;
    m_gate.leave();

    ASSERT_EQ(closer.wait_for(Limit), std::future_status::ready);
    EXPECT_TRUE(closer.get());
}

TEST_F(RenderGateTest, LetsThoseWhoWaitInBeforeTheNextFrame)
{
    ASSERT_TRUE(m_gate.tryEnter());
    std::promise<void> mayOpen;
    auto closer = std::async(std::launch::async, [&] {
        m_gate.close();
        mayOpen.get_future().wait();
        return m_gate.open();
    });
    const bool isKeptOut = awaitThatSomebodyWaits();
    m_gate.leave();
    EXPECT_TRUE(isKeptOut);
    // The renderer stays out until the gate is opened.
    int frames = 0;
    for (int i = 0; i < 1000; ++i)
        frames += m_gate.tryEnter() ? 1 : 0;

    mayOpen.set_value();
    EXPECT_EQ(frames, 0);
    ASSERT_EQ(closer.wait_for(Limit), std::future_status::ready);
    EXPECT_TRUE(closer.get());
    EXPECT_TRUE(m_gate.tryEnter());
    m_gate.leave();
}

TEST_F(RenderGateTest, GoesFromOneHolderToTheNext)
{
    m_gate.close();
    auto next = std::async(std::launch::async, [&] {
        m_gate.close();
        return m_gate.open();
    });
    EXPECT_TRUE(m_gate.open());

    ASSERT_EQ(next.wait_for(Limit), std::future_status::ready);
    EXPECT_TRUE(next.get());
    EXPECT_FALSE(m_gate.isClosed());
}

TEST_F(RenderGateTest, KeepsHoldersAndABusyRendererApart)
{
    std::atomic<bool> isOver{false};
    std::atomic<int> inside{0};
    std::atomic<int> meetings{0};
    std::atomic<int> frames{0};
    const auto stay = [&] {
        meetings += inside.fetch_add(1) == 0 ? 0 : 1;
        std::this_thread::yield();
        --inside;
    };
    std::thread renderer([&] {
        while (!isOver || frames == 0) {
            if (!m_gate.tryEnter())
                continue;
            stay();
            ++frames;
            m_gate.leave();
        }
    });
    const auto hold = [&] {
        for (int i = 0; i < 300; ++i) {
            m_gate.close();
            stay();
            m_gate.open();
        }
    };
    std::thread one(hold);
    std::thread two(hold);
    one.join();
    two.join();
    isOver = true;
    renderer.join();

    EXPECT_EQ(meetings, 0);
    EXPECT_GT(frames, 0);
    EXPECT_FALSE(m_gate.isClosed());
}
