// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TraceFixture.h"

#include <kparextension/RvARBeautyTrack.h>

#include <QImage>

#include <array>

namespace {

/// A picture whose memory tells when its last copy is gone: as the mask of a beauty track it gets
/// into the descriptions, which share it. It must outlive them.
class WatchedMask
{
public:
    /// Describes the timeline of the history with the mask on it, with `store`; then nothing but
    /// the description has the mask.
    template <class Store>
    WatchedMask(qrvkp::RvKpTimeLine& timeline, Store&& store)
    {
        const auto track = TimelineSamples::track(norvel::RecordTypeARBeauty, 77);
        auto& beauty = dynamic_cast<qkpar::RvARBeautyTrack&>(*track);
        beauty.setBeautyMaskFaceId(1);
        beauty.setBeautyActiveMaskImage(QImage(m_pixels.data(), 1, 1, QImage::Format_RGB32,
                                               &WatchedMask::lastCopyGone, &m_gone));
        EXPECT_TRUE(timeline.addMixTrack(track.get()));
        store();
        EXPECT_TRUE(timeline.removeMixTrack(track.get()));
    }
    ~WatchedMask() = default;
    WatchedMask(const WatchedMask&) = delete;
    WatchedMask& operator=(const WatchedMask&) = delete;

    /// Whether the description was deleted.
    bool isGone() const { return m_gone; }

private:
    static void lastCopyGone(void* gone) { *static_cast<bool*>(gone) = true; }

    alignas(4) std::array<uchar, 4> m_pixels{};
    bool m_gone = false;
};

class DescriptionLifeTest : public TraceTest
{
};

} // namespace

TEST_F(DescriptionLifeTest, LastsUntilTheHistoryStartsAgain)
{
    const WatchedMask first(*timeline, [&] { trace->initTrace(); });
    const WatchedMask second(*timeline, [&] { trace->recordStatus(); });
    EXPECT_FALSE(first.isGone());
    EXPECT_FALSE(second.isGone());
    trace->initTrace();
    EXPECT_TRUE(first.isGone());
    EXPECT_TRUE(second.isGone());
}

TEST_F(DescriptionLifeTest, EndsWhenAStartFindsNoTimeline)
{
    const WatchedMask first(*timeline, [&] { trace->initTrace(); });
    takeTimelineAway();
    trace->initTrace();
    EXPECT_TRUE(first.isGone());
}

TEST_F(DescriptionLifeTest, EndsWithTheCutOfWhatCouldBeRedone)
{
    const WatchedMask first(*timeline, [&] { trace->initTrace(); });
    const WatchedMask second(*timeline, [&] { trace->recordStatus(); });
    const WatchedMask third(*timeline, [&] { trace->recordStatus(); });
    trace->undo();
    trace->undo();
    EXPECT_FALSE(third.isGone());
    takeTimelineAway();
    trace->recordStatus();
    EXPECT_FALSE(third.isGone()) << "nothing was recorded";
    giveTimelineBack();
    trace->recordStatus();
    // The undo brought the tracks with the masks to the live timeline: they go with them.
    timeline = TimelineSamples::timeline();
    giveTimelineBack();
    EXPECT_FALSE(first.isGone());
    EXPECT_TRUE(second.isGone());
    EXPECT_TRUE(third.isGone());
    trace->initTrace();
    EXPECT_TRUE(first.isGone());
}

TEST_F(DescriptionLifeTest, DoesNotEndWithTheHistory)
{
    // The memory of the mask outlives the descriptions, which are never deleted.
    static auto* mask = static_cast<WatchedMask*>(nullptr);
    const UnreportedLeaks pause;
    mask = new WatchedMask(*timeline, [&] { trace->initTrace(); });
    trace.reset();
    EXPECT_FALSE(mask->isGone());
}
