// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/Tour.h"

#include "tour/TourTimelineFixture.h"

#include <sstream>

namespace {

bool fade(TourTimeline& timeline)
{
    return changed(timeline.clip(0), [](auto& clip) { clip.setAlpha(clip.getAlpha() / 2.0F); });
}

bool doNothing(TourTimeline& /*timeline*/)
{
    return true;
}

/// A tag is described, but an undo that finds nothing else changed leaves it as it is.
bool changeTagAlone(TourTimeline& timeline)
{
    return changed(timeline.clip(1), [](auto& clip) { clip.setTag("unseen"); });
}

class TourTest : public TourTimelineFixture
{
protected:
    /// Makes a tour of these edits; gives what it prints.
    std::string run(const TourEdits& edits, const TourEdits& branch = {})
    {
        std::ostringstream out;
        TourReport report(out, false);
        TourDocuments documents({});
        Tour tour(m_tour, m_folder.path().toStdString(), report, documents);
        EXPECT_TRUE(tour.run(edits, branch));
        m_agreed = report.agreed();
        m_steps = report.stepCount();
        return out.str();
    }

    bool m_agreed = false;
    int m_steps = 0;
};

} // namespace

TEST_F(TourTest, AgreesOverTwoEditsAndABranch)
{
    const std::string out = run({{"a", &fade}, {"b", &fade}}, {{"c", &fade}});
    EXPECT_TRUE(m_agreed) << out;
    // Two edits, two undos, two redos, one undo, the branch, two undos, two redos.
    EXPECT_EQ(m_steps, 2 + 2 + 2 + 1 + 1 + 2 + 2);
}

TEST_F(TourTest, SaysWhenAnEditChangesNothing)
{
    const std::string out = run({{"a", &fade}, {"nothing", &doNothing}});
    EXPECT_FALSE(m_agreed);
    EXPECT_NE(out.find("different\n        - the edit changes nothing that is described\n"),
              std::string::npos)
        << out;
}

TEST_F(TourTest, SaysWhatAnUndoDoesNotBringBack)
{
    const std::string out = run({{"a", &fade}, {"tag", &changeTagAlone}});
    EXPECT_FALSE(m_agreed);
    EXPECT_NE(out.find("(type 3): auxText\n"), std::string::npos) << out;
}

TEST_F(TourTest, LeavesThePlayerWithoutATimeline)
{
    run({{"a", &fade}});
    EXPECT_EQ(m_tour.player().getTimeLine(), nullptr);
}
