// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/OrderedSequence.h>

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

using qrvkp::OrderedSequence;

namespace {

/// More than a few chunks.
constexpr int many = 3000;

struct Item
{
    const void* place = nullptr;
};

struct PlaceOf
{
    const void*& operator()(Item* item) const { return item->place; }
    const void*& operator()(const std::shared_ptr<Item>& item) const { return item->place; }
};

/// Makes the handles of either kind; raw ones point into a pool.
template <class Handle>
class Maker;

template <>
class Maker<Item*>
{
public:
    Item* make() { return m_pool.emplace_back(std::make_unique<Item>()).get(); }

private:
    std::vector<std::unique_ptr<Item>> m_pool;
};

template <>
class Maker<std::shared_ptr<Item>>
{
public:
    std::shared_ptr<Item> make() { return std::make_shared<Item>(); }
};

/// A sequence and the plain vector that says what it must hold.
template <class Handle>
class OrderedSequenceTest : public testing::Test
{
protected:
    Handle insert(std::size_t position)
    {
        const Handle item = m_items.make();
        m_sequence.insert(position, item);
        const auto place = std::min(position, m_expected.size());
        m_expected.insert(m_expected.begin() + static_cast<std::ptrdiff_t>(place), item);
        return item;
    }

    void eraseAt(std::size_t position)
    {
        m_sequence.erase(m_expected[position]);
        m_expected.erase(m_expected.begin() + static_cast<std::ptrdiff_t>(position));
    }

    void expectAsExpected() const
    {
        ASSERT_EQ(m_sequence.size(), m_expected.size());
        std::vector<Handle> found;
        m_sequence.forEach([&](const Handle& item) { found.push_back(item); });
        EXPECT_TRUE(found == m_expected);
    }

    void expectEveryPlaceIsKnown() const
    {
        for (std::size_t i = 0; i < m_expected.size(); ++i) {
            ASSERT_TRUE(m_sequence.contains(m_expected[i]));
            ASSERT_TRUE(m_sequence.isAt(i, m_expected[i])) << i;
            ASSERT_FALSE(m_sequence.isAt(i + 1, m_expected[i])) << i;
        }
    }

    Maker<Handle> m_items;
    OrderedSequence<Handle, PlaceOf> m_sequence;
    std::vector<Handle> m_expected;
};

using Handles = testing::Types<Item*, std::shared_ptr<Item>>;

} // namespace

TYPED_TEST_SUITE(OrderedSequenceTest, Handles);

TYPED_TEST(OrderedSequenceTest, StartsEmpty)
{
    const auto stranger = this->m_items.make();
    EXPECT_EQ(this->m_sequence.size(), 0U);
    EXPECT_FALSE(this->m_sequence.contains(stranger));
    EXPECT_FALSE(this->m_sequence.isAt(0, stranger));
    this->m_sequence.forEach([](const auto&) { ADD_FAILURE() << "an item in an empty sequence"; });
}

TYPED_TEST(OrderedSequenceTest, FillsFromFrontToBack)
{
    for (std::size_t i = 0; i < many; ++i)
        this->insert(i);
    this->expectAsExpected();
    this->expectEveryPlaceIsKnown();
}

TYPED_TEST(OrderedSequenceTest, FillsFromBackToFront)
{
    for (int i = 0; i < many; ++i)
        this->insert(0);
    this->expectAsExpected();
    this->expectEveryPlaceIsKnown();
}

TYPED_TEST(OrderedSequenceTest, FillsFromTheMiddle)
{
    for (std::size_t i = 0; i < many; ++i)
        this->insert(i / 2);
    this->expectAsExpected();
    this->expectEveryPlaceIsKnown();
}

TYPED_TEST(OrderedSequenceTest, BeyondTheEndIsTheEnd)
{
    for (int i = 0; i < many; ++i)
        this->insert(static_cast<std::size_t>(-1));
    this->expectAsExpected();
}

TYPED_TEST(OrderedSequenceTest, AnErasedItemIsGoneAndCanComeBack)
{
    const auto item = this->insert(0);
    this->insert(1);
    this->eraseAt(0);
    EXPECT_FALSE(this->m_sequence.contains(item));
    EXPECT_FALSE(this->m_sequence.isAt(0, item));
    EXPECT_EQ(item->place, nullptr);
    this->m_sequence.insert(1, item);
    EXPECT_TRUE(this->m_sequence.isAt(1, item));
}

TYPED_TEST(OrderedSequenceTest, AnItemOfAnotherSequenceIsNotContained)
{
    decltype(this->m_sequence) other;
    const auto item = this->m_items.make();
    other.insert(0, item);
    EXPECT_TRUE(other.contains(item));
    EXPECT_FALSE(this->m_sequence.contains(item));
}

TYPED_TEST(OrderedSequenceTest, CanBeEmptiedFromEitherEndAndFilledAgain)
{
    for (const bool fromFront : {true, false}) {
        for (std::size_t i = 0; i < many; ++i)
            this->insert(i);
        while (!this->m_expected.empty())
            this->eraseAt(fromFront ? 0 : this->m_expected.size() - 1);
        this->expectAsExpected();
        this->insert(5);
        this->expectAsExpected();
        this->eraseAt(0);
    }
}

TYPED_TEST(OrderedSequenceTest, ARandomWalkGivesTheOrderOfAPlainVector)
{
    for (const unsigned seed : {1U, 2U, 3U}) {
        std::mt19937 random(seed);
        const auto below = [&](std::size_t size) {
            return std::uniform_int_distribution<std::size_t>(0, size)(random);
        };
        for (int step = 0; step < 6000; ++step) {
            const std::size_t chanceToGrow = step < many ? 8 : 2;
            if (this->m_expected.empty() || below(9) < chanceToGrow)
                this->insert(below(this->m_expected.size()));
            else
                this->eraseAt(below(this->m_expected.size() - 1));
            if (step % 100 == 0)
                this->expectAsExpected();
        }
        this->expectAsExpected();
        this->expectEveryPlaceIsKnown();
        ASSERT_FALSE(this->HasFailure()) << "seed " << seed;
    }
}
