// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TrackKinds.h"

#include <rvkpcore/RvKpGroup.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace qrvkp;

namespace {

/// Walks over a timeline by random operations and does the same to plain vectors: whatever the
/// timeline answers and lists must be what the vectors say.
class TimeLineWalk
{
public:
    explicit TimeLineWalk(unsigned seed)
        : m_random(seed)
    {
    }

    /// A phase of the walk; `growth` of 100 operations that add or take away add.
    void walk(int steps, int growth)
    {
        for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
            oneStep(growth);
            expectSameGroups();
            if (step % 50 == 0)
                expectSameMixTracks();
        }
        expectSameMixTracks();
    }

    void expectLongerThan(std::size_t size)
    {
        EXPECT_GT(m_groups.size(), size);
        EXPECT_GT(m_mixTracks.size(), size / 4);
    }

    void expectEmpty()
    {
        EXPECT_TRUE(m_groups.empty());
        EXPECT_TRUE(m_mixTracks.empty());
    }

    std::size_t size() const { return m_groups.size() + m_mixTracks.size(); }

private:
    int upTo(int largest) { return std::uniform_int_distribution<int>(0, largest)(m_random); }

    /// Any position, also beyond both ends.
    int anyPosition() { return upTo(static_cast<int>(m_groups.size()) + 10) - 5; }

    template <class Object>
    typename std::vector<Object>::iterator anyOf(std::vector<Object>& objects)
    {
        return objects.begin() + upTo(static_cast<int>(objects.size()) - 1);
    }

    void oneStep(int growth)
    {
        const bool grows = upTo(99) < growth;
        switch (upTo(5)) {
        case 0:
            grows ? addMixTrack() : removeMixTrack();
            break;
        case 1:
        case 2:
            moveGroup();
            break;
        default:
            grows ? addGroup() : removeGroup();
            break;
        }
    }

    void addGroup()
    {
        auto group = adopt(RvKpGroup::create(upTo(1000)));
        const int position = anyPosition();
        const auto end = static_cast<int>(m_groups.size());
        if (upTo(3) == 0) {
            ASSERT_TRUE(m_timeline->pushBackGroup(group.get()));
            m_groups.push_back(std::move(group));
        } else {
            ASSERT_TRUE(m_timeline->insertGroup(group.get(), position));
            ASSERT_FALSE(m_timeline->insertGroup(group.get(), position));
            m_groups.insert(m_groups.begin() + std::clamp(position, 0, end), std::move(group));
        }
    }

    void removeGroup()
    {
        if (m_groups.empty())
            return;
        const auto place = anyOf(m_groups);
        ASSERT_TRUE(m_timeline->removeGroup(place->get()));
        ASSERT_FALSE(m_timeline->removeGroup(place->get()));
        m_groups.erase(place);
    }

    void moveGroup()
    {
        if (m_groups.empty())
            return;
        const auto place = anyOf(m_groups);
        const int position = anyPosition();
        ASSERT_TRUE(m_timeline->changeGroupPosition(place->get(), position));
        auto group = std::move(*place);
        m_groups.erase(place);
        const auto end = static_cast<int>(m_groups.size());
        m_groups.insert(m_groups.begin() + std::clamp(position, 0, end), std::move(group));
    }

    void addMixTrack()
    {
        auto track = newTrack(upTo(1000), upTo(1000));
        ASSERT_TRUE(m_timeline->addMixTrack(track.get()));
        m_mixTracks.push_back(std::move(track));
    }

    void removeMixTrack()
    {
        if (m_mixTracks.empty())
            return;
        const auto place = anyOf(m_mixTracks);
        ASSERT_TRUE(m_timeline->removeMixTrack(place->get()));
        ASSERT_FALSE(m_timeline->removeMixTrack(place->get()));
        m_mixTracks.erase(place);
    }

    void expectSameGroups()
    {
        const auto groups = adopt(m_timeline->getGroups());
        EXPECT_TRUE(groups == m_groups) << "the order of " << m_groups.size() << " groups differs";
    }

    void expectSameMixTracks()
    {
        const auto tracks = adopt(m_timeline->getMixTracks());
        const auto isSame = [](const auto& a, const auto& b) {
            return a->getContext() == b->getContext();
        };
        EXPECT_TRUE(std::equal(tracks.begin(), tracks.end(), m_mixTracks.begin(), m_mixTracks.end(),
                               isSame))
            << "the order of " << m_mixTracks.size() << " mix tracks differs";
    }

    std::mt19937 m_random;
    const Reference<RvKpTimeLine> m_timeline = adopt(RvKpTimeLine::create());
    std::vector<Reference<RvKpGroup>> m_groups;
    std::vector<Reference<RvITrack>> m_mixTracks;
};

class TimeLineWalkTest : public testing::TestWithParam<unsigned>
{
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Seeds, TimeLineWalkTest, testing::Values(1U, 20U, 300U));

TEST_P(TimeLineWalkTest, AnyRowOfOperationsGivesTheOrderThatPlainListsGive)
{
    TimeLineWalk walk(GetParam());
    walk.walk(3000, 95);
    walk.expectLongerThan(1000);
    walk.walk(2000, 50);
    while (walk.size() > 0 && !HasFailure())
        walk.walk(500, 5);
    walk.expectEmpty();
    walk.walk(300, 80);
}
