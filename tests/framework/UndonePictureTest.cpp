// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// What is seen after an undo.

#include "PlayedTimeline.h"

#include <norvel/trace/RvEditorTrace.h>

#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <QPainterPath>

using namespace qrvkp;

namespace {

/// A prepared player, whose timeline has a history.
class UndonePictureTest : public PlayedTimeline
{
protected:
    ~UndonePictureTest() override
    {
        player().setTimeLine(nullptr);
        if (m_trace)
            m_trace->initTrace(); // frees the descriptions
    }

    void prepareWithHistory()
    {
        prepare();
        m_trace.reset(norvel::RvEditorTrace::create(application.get()));
        ASSERT_TRUE(m_trace->initTrace());
    }

    /// The colours at two points, once the first one is seen.
    void expectSeen(QRgb atEdge, QRgb atCentre)
    {
        EXPECT_TRUE(becomes(m_edge, atEdge));
        EXPECT_TRUE(isColour(seenAt(m_centre), atCentre));
    }

    std::unique_ptr<norvel::RvEditorTrace> m_trace;
    const QPointF m_centre{160, 90};
    const QPointF m_edge{110, 90}; ///< within the larger overlay alone
    const QSize m_larger{120, 60};
    const QSize m_smaller{60, 40};
};

} // namespace

TEST_F(UndonePictureTest, EqualZOrdersStackByTrackId)
{
    const auto larger = addColour(Red, m_larger);
    const auto smaller = addColour(Blue, m_smaller);
    prepare();
    expectSeen(Red, Blue);
    larger->setTrackID(smaller->getTrackID() + 1);
    EXPECT_TRUE(becomes(m_centre, Red)) << "the greater id is on top";
    larger->setZOrder(-1);
    EXPECT_TRUE(becomes(m_centre, Blue)) << "but the z-order comes first";
}

TEST_F(UndonePictureTest, AnOverlayThatWasAddedLaterIsBelowOneOfAGreaterId)
{
    const auto larger = addColour(Red, m_larger);
    const auto smaller = addColour(Blue, m_smaller);
    ASSERT_TRUE(timeline->removeMixTrack(larger.get()));
    ASSERT_TRUE(timeline->addMixTrack(larger.get()));
    prepare();
    expectSeen(Red, Blue);
}

TEST_F(UndonePictureTest, ALowerOverlayThatIsDeletedAndUndoneComesBackBelow)
{
    appendColour(Green);
    const auto larger = addColour(Red, m_larger);
    const auto smaller = addColour(Blue, m_smaller);
    prepareWithHistory();
    expectSeen(Red, Blue);
    ASSERT_TRUE(timeline->removeMixTrack(larger.get()));
    m_trace->recordStatus();
    expectSeen(Green, Blue);
    m_trace->undo();
    expectSeen(Red, Blue);
}

TEST_F(UndonePictureTest, AMatteWhoseClipIsDeletedCutsNothingAndCutsItAgainAfterTheUndo)
{
    appendColour(Green);
    const auto larger = addColour(Red, m_larger);
    const auto matte = adopt(RvTrkMatteEffectTrack::createPathMatteTrack(0, 10000));
    auto* const rightHalf = new QPainterPath;
    rightHalf->addRect(CanvasWidth / 2.0, 0, CanvasWidth / 2.0, CanvasHeight);
    matte->setMattePath(rightHalf, static_cast<float>(CanvasWidth),
                        static_cast<float>(CanvasHeight), 1.0F, RvMattePathType());
    ASSERT_TRUE(timeline->addMixTrack(matte.get()));
    larger->retain(); // the binding takes over a reference
    ASSERT_TRUE(matte->bind(larger.get(), 1));
    prepareWithHistory();

    const QPointF left = m_edge;
    const QPointF right(CanvasWidth - m_edge.x(), m_edge.y());
    EXPECT_TRUE(becomes(right, Red));
    EXPECT_TRUE(isColour(seenAt(left), Green)) << "cut";
    ASSERT_TRUE(timeline->removeMixTrack(larger.get()));
    m_trace->recordStatus();
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(becomes(right, Green));
        EXPECT_TRUE(isColour(seenAt(left), Green)) << "the canvas is whole";
        EXPECT_TRUE(isColour(seenAt({2, 2}), Green)) << "the canvas is whole";
        m_trace->undo();
        EXPECT_TRUE(becomes(right, Red));
        EXPECT_TRUE(isColour(seenAt(left), Green)) << "cut";
        m_trace->redo();
    }
}
