// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/ReaderPool.h>

#include <gtest/gtest.h>

#include "ManualClock.h"
#include "WarningCapture.h"

#include <memory>
#include <string>
#include <vector>

namespace {

struct Reader
{
    std::string path;
};

class ReaderPoolTest : public testing::Test
{
protected:
    Reader* take(const std::string& path, std::uintptr_t lane, double variant = 1.0)
    {
        return m_pool.take(path, variant, lane, [&] {
            ++m_opened;
            return path == "missing" ? nullptr : std::make_unique<Reader>(Reader{path});
        });
    }

    void endRounds(std::uint64_t rounds)
    {
        for (std::uint64_t i = 0; i < rounds; ++i)
            m_pool.endRound();
    }

    WarningCapture m_warnings;
    ManualClock m_clock;
    rvengine::Interrupt m_interrupt;
    rvengine::ReaderPool<Reader> m_pool{m_clock.clock(), m_interrupt};
    int m_opened = 0;
};

} // namespace

TEST_F(ReaderPoolTest, GivesALaneTheSameReaderInEveryRound)
{
    Reader* const first = take("a", 1);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->path, "a");
    for (int round = 0; round < 10; ++round) {
        endRounds(1);
        EXPECT_EQ(take("a", 1), first);
    }

    EXPECT_EQ(m_opened, 1);
    EXPECT_EQ(m_pool.size(), 1U);
}

TEST_F(ReaderPoolTest, GivesEachLaneAReaderOfItsOwn)
{
    Reader* const one = take("a", 1);
    Reader* const two = take("a", 2);
    EXPECT_NE(one, two);
    endRounds(1);

    EXPECT_EQ(take("a", 2), two);
    EXPECT_EQ(take("a", 1), one);
    EXPECT_EQ(m_opened, 2);
}

TEST_F(ReaderPoolTest, GivesTheSameReaderOnlyOnceInARound)
{
    EXPECT_NE(take("a", 1), take("a", 1));
    EXPECT_EQ(m_opened, 2);
}

TEST_F(ReaderPoolTest, LeavesAReaderToItsLaneThatUsedItInTheLastRound)
{
    Reader* const one = take("a", 1);
    endRounds(1);

    EXPECT_NE(take("a", 2), one);
    EXPECT_EQ(take("a", 1), one);
}

TEST_F(ReaderPoolTest, HandsAReaderOnThatNobodyUsed)
{
    Reader* const one = take("a", 1);
    endRounds(2);

    EXPECT_EQ(take("a", 2), one);
    EXPECT_EQ(m_opened, 1);
}

TEST_F(ReaderPoolTest, TellsFilesAndVariantsApart)
{
    Reader* const a = take("a", 1);
    Reader* const b = take("b", 1);
    Reader* const fast = take("a", 1, 2.0);
    endRounds(1);

    EXPECT_EQ(take("a", 1), a);
    EXPECT_EQ(take("b", 1), b);
    EXPECT_EQ(take("a", 1, 2.0), fast);
    EXPECT_EQ(m_opened, 3);
}

TEST_F(ReaderPoolTest, ClosesAReaderThatNobodyUsedForLong)
{
    take("a", 1);
    endRounds(rvengine::ReaderPool<Reader>::PatienceInRounds + 1);
    EXPECT_EQ(m_pool.size(), 1U);

    endRounds(1);
    EXPECT_EQ(m_pool.size(), 0U);
}

TEST_F(ReaderPoolTest, KeepsTheReadersThatWereUsedLastOfManyThatNobodyUses)
{
    constexpr int most = static_cast<int>(rvengine::ReaderPool<Reader>::MostIdle);
    for (int i = 0; i < 3 * most; ++i) {
        take(std::to_string(i), 1);
        endRounds(1);
        EXPECT_LE(m_pool.size(), rvengine::ReaderPool<Reader>::MostIdle + 1);
    }
    const int opened = m_opened;
    for (int i = 2 * most; i < 3 * most; ++i)
        take(std::to_string(i), 1);
    EXPECT_EQ(m_opened, opened);
    take("0", 1);
    EXPECT_EQ(m_opened, opened + 1);
}

TEST_F(ReaderPoolTest, KeepsAllReadersThatAreInUse)
{
    constexpr int many = 3 * static_cast<int>(rvengine::ReaderPool<Reader>::MostIdle);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < many; ++i)
            take(std::to_string(i), 1);
        endRounds(1);
    }

    EXPECT_EQ(m_opened, many);
}

TEST_F(ReaderPoolTest, TakesInAReaderInPlaceOfTheOneOfItsLane)
{
    take("a", 1);
    Reader* const other = take("a", 2);
    endRounds(1);
    Reader* const put = m_pool.put("a", 1.0, 1, std::make_unique<Reader>(Reader{"put"}));
    ASSERT_NE(put, nullptr);
    EXPECT_EQ(put->path, "put");
    EXPECT_EQ(m_pool.size(), 2U);
    EXPECT_EQ(take("a", 2), other);
    EXPECT_NE(take("a", 1), put) << "it is used in this round";
    endRounds(1);
    EXPECT_EQ(take("a", 1), put);
}

TEST_F(ReaderPoolTest, NamesAReaderOnceThatNobodyUsedForSoManyRounds)
{
    constexpr std::uint64_t patience = 5;
    std::vector<std::string> idle;
    take("a", 1);
    for (std::uint64_t round = 0; round < 4 * patience; ++round) {
        take("b", 1);
        endRounds(1);
        m_pool.forIdle(patience, [&](const Reader& reader) { idle.push_back(reader.path); });
        EXPECT_EQ(idle.empty(), round < patience);
    }
    EXPECT_EQ(idle, std::vector<std::string>{"a"});
    EXPECT_EQ(take("a", 1)->path, "a");
}

TEST_F(ReaderPoolTest, WarnsOnceAndDoesNotTryAgainAtOnce)
{
    for (int round = 0; round < 10; ++round) {
        EXPECT_EQ(take("missing", 1), nullptr);
        EXPECT_EQ(take("missing", 2), nullptr);
        endRounds(1);
    }

    EXPECT_EQ(m_opened, 1);
    m_clock.advance(rvengine::UnreadableFiles::UntilNextTry);
    EXPECT_EQ(take("missing", 1), nullptr);
    EXPECT_EQ(m_opened, 2);
    EXPECT_EQ(m_pool.size(), 0U);
    EXPECT_EQ(m_warnings.take(), QStringList{"cannot read the media file missing"});
}

TEST_F(ReaderPoolTest, SaysNothingOfAFileWhoseOpeningIsInterrupted)
{
    m_interrupt.raise();
    EXPECT_EQ(take("missing", 1), nullptr);
    EXPECT_EQ(m_warnings.take(), QStringList{});
}
