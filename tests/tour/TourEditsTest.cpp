// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourEdits.h"

#include "support/DescriptionComparison.h"
#include "tour/TourTimelineFixture.h"

#include <set>

namespace {

class TourEditsTest : public TourTimelineFixture
{
protected:
    /// Makes the first edits of the tour.
    void make(std::size_t count)
    {
        const TourEdits edits = tourEdits();
        for (std::size_t i = 0; i < count; ++i)
            ASSERT_TRUE(edits[i].apply(m_tour)) << edits[i].name;
    }

    void expectEachToChangeTheTimeline(const TourEdits& edits)
    {
        auto before = m_tour.capture();
        for (const TourEdit& edit : edits) {
            ASSERT_TRUE(edit.apply(m_tour)) << edit.name;
            auto after = m_tour.capture();
            EXPECT_FALSE(differences(*before, *after).empty()) << edit.name;
            before = std::move(after);
        }
    }
};

/// The record types of what a description has over the main line.
std::set<int> mixTypes(const norvel::RvTimeLineAttribute& description)
{
    std::set<int> types;
    for (const norvel::RvAttribute* record : description.mixAttribs)
        types.insert(record->type);
    return types;
}

} // namespace

TEST_F(TourEditsTest, AreManyWithNamesOfTheirOwn)
{
    std::set<std::string> names;
    for (const TourEdit& edit : tourEdits())
        EXPECT_TRUE(names.insert(edit.name).second) << edit.name;
    EXPECT_GE(names.size(), 20U);
    EXPECT_GE(branchEdits().size(), 3U);
}

TEST_F(TourEditsTest, EachChangeWhatIsDescribed)
{
    expectEachToChangeTheTimeline(tourEdits());
}

TEST_F(TourEditsTest, OfTheBranchEachChangeWhatIsDescribed)
{
    make(tourEdits().size() / 2);
    expectEachToChangeTheTimeline(branchEdits());
}

TEST_F(TourEditsTest, ReachEveryKindThatIsBroughtBack)
{
    make(tourEdits().size() - deletingEdits().size());
    EXPECT_EQ(mixTypes(*m_tour.capture()), (std::set<int>{2, 3, 4, 5, 7, 8, 9, 10, 13}));
}

TEST_F(TourEditsTest, CannotBeMadeWithoutTheirTrack)
{
    for (const TourEdit& edit : deletingEdits()) {
        if (std::string("delete the clip that the detection follows") == edit.name)
            continue; // there are clips from the start
        EXPECT_FALSE(edit.apply(m_tour)) << edit.name;
    }
}

TEST(TourTimelineTest, HoldsEveryFileButTheFirstPictureAndSound)
{
    const QTemporaryDir folder;
    TourMedia media;
    for (const char* name : {"1.mp4", "2.mp4", "3.mp4", "4.mp4"})
        media.videos.push_back(TestMedia::video(folder.path(), name, 32, 32, "25", 0.2, false));
    for (const char* name : {"1.png", "2.png"})
        media.pictures.push_back(TestMedia::picture(folder.path(), name, 8, 8));
    for (const char* name : {"1.wav", "2.wav"})
        media.sounds.push_back(TestMedia::sound(folder.path(), name, 0.2));
    qrvkp::RvKpApplication application;
    TourTimeline tour(application, media);
    ASSERT_TRUE(tour.build());

    std::vector<std::string> sources;
    const auto description = tour.capture();
    for (const norvel::RvAttribute* record : description->mainAttribs)
        sources.push_back(record->source);
    std::vector<std::string> expected = media.videos;
    expected.push_back(media.pictures[1]);
    EXPECT_EQ(sources, expected);
    ASSERT_EQ(description->mixAttribs.size(), 2U);
    EXPECT_EQ(description->mixAttribs[0]->source, media.sounds[1]);
}
