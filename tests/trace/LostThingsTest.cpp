// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// What an undo brings back by the framework's own doing, though no description has it.

#include "TraceFixture.h"

#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <map>

using norvel::RvAttributeUtility;

namespace {

/// Effects that are bound to a clip of the main line, which goes and comes.
class BoundEffectTest : public TraceTest
{
protected:
    static constexpr std::uint64_t clip = 1;

    template <class Effect>
    void addBound(Effect* effect)
    {
        ASSERT_TRUE(timeline->addMixTrack(effect));
        ASSERT_TRUE(effect->bind(RvAttributeUtility::getMainTrack(timeline.get(), clip), 2));
    }

    void deleteClip()
    {
        const auto group = norvel::adopt(RvAttributeUtility::getGroup(timeline.get(), clip));
        ASSERT_TRUE(timeline->removeGroup(group.get()));
    }

    static void expectBound(const qrvkp::RvIEffectTrack& effect)
    {
        EXPECT_EQ(effect.getActionRange(), qrvkp::RvActionRangeTrack);
        EXPECT_EQ(effect.getMediaBindType(), 2);
        const auto track = norvel::adopt(effect.getBindTrack());
        ASSERT_TRUE(track);
        EXPECT_EQ(track->getTrackID(), clip);
    }

    static void expectAway(const qrvkp::RvIEffectTrack& effect)
    {
        EXPECT_EQ(effect.getActionRange(), qrvkp::RvActionRangeAway);
        const auto track = norvel::adopt(effect.getBindTrack());
        EXPECT_FALSE(track);
    }

    /// Deletes the clip of the effect, undoes and redoes that, twice.
    void goAndCome(const qrvkp::RvIEffectTrack& effect)
    {
        ASSERT_TRUE(trace->initTrace());
        expectBound(effect);
        deleteClip();
        ASSERT_TRUE(trace->recordStatus());
        for (int i = 0; i < 2; ++i) {
            expectAway(effect);
            trace->undo();
            expectBound(effect);
            trace->redo();
        }
        expectAway(effect);
    }
};

} // namespace

TEST_F(BoundEffectTest, AMatteIsBoundToItsClipAfterTheUndoOfADelete)
{
    const auto matte = norvel::adopt(qrvkp::RvTrkMatteEffectTrack::createPathMatteTrack(0, 1000));
    addBound(matte.get());
    goAndCome(*matte);
}

TEST_F(BoundEffectTest, ALabelIsBoundToItsClipAfterTheUndoOfADelete)
{
    const auto label = norvel::adopt(qkpar::RvARLabelTrack::create("label", 0, 1000));
    addBound(label.get());
    goAndCome(*label);
}

TEST_F(BoundEffectTest, AFilterIsBoundToItsClipAfterTheUndoOfADelete)
{
    const auto filter = norvel::adopt(qkpar::RvARFilterTrack::create("", 0, 1000));
    addBound(filter.get());
    goAndCome(*filter);
}

TEST_F(BoundEffectTest, AnEditOfAFilterWhoseClipIsAwayIsTakenBackWithoutBindingItToTheCanvas)
{
    const auto filter = norvel::adopt(qkpar::RvARFilterTrack::create("", 0, 1000));
    addBound(filter.get());
    trace->initTrace();
    deleteClip();
    trace->recordStatus();
    filter->setAlpha(0.5F);
    trace->recordStatus();
    trace->undo();
    EXPECT_EQ(filter->getAlpha(), 1.0F);
    expectAway(*filter);
    trace->redo();
    expectAway(*filter);
    trace->undo();
    trace->undo();
    expectBound(*filter);
}

TEST_F(BoundEffectTest, ThatAnEffectWasBoundToAClipThatIsAwayIsNotBroughtBack)
{
    // As the documentation of the undo says.
    const auto filter = norvel::adopt(qkpar::RvARFilterTrack::create("", 0, 1000));
    addBound(filter.get());
    deleteClip();
    trace->initTrace();
    filter->bindDynamic();
    trace->recordStatus();
    trace->undo();
    EXPECT_EQ(filter->getActionRange(), qrvkp::RvActionRangeDynamic);
}

namespace {

/// Two liquify tracks on the timeline, with a cache of the test's own.
class LiquifyUndoTest : public TraceTest
{
protected:
    using Radii = std::vector<float>;

    LiquifyUndoTest()
    {
        trace->setCacheDir(m_root.path().toStdString());
        for (const auto* track : {&m_first, &m_second})
            timeline->addMixTrack(track->get());
    }
    ~LiquifyUndoTest() override
    {
        RvAttributeUtility::_sCacheDir = m_cacheDir;
        RvAttributeUtility::_sCurrentCacheLiquefyDir = m_current;
    }

    static void addStroke(qkpar::RvARLiquifyTrack& track, float radius)
    {
        qkpar::RvARLiquifyOperation stroke;
        stroke.radius = radius;
        track.appendToLiquifyOperation(stroke);
    }

    static Radii radii(qkpar::RvARLiquifyTrack& track)
    {
        track.confirmCurrentLiquify();
        Radii radii;
        for (const auto& stroke : track.getConfirmedOperations())
            radii.push_back(stroke.radius);
        return radii;
    }

    QString root() const { return m_root.path(); }

    const norvel::Reference<qkpar::RvARLiquifyTrack> m_first =
        norvel::adopt(qkpar::RvARLiquifyTrack::create("", 0, 1000));
    const norvel::Reference<qkpar::RvARLiquifyTrack> m_second =
        norvel::adopt(qkpar::RvARLiquifyTrack::create("", 0, 1000));

private:
    const std::string m_cacheDir = RvAttributeUtility::_sCacheDir;
    const std::string m_current = RvAttributeUtility::_sCurrentCacheLiquefyDir;
    QTemporaryDir m_root;
};

} // namespace

TEST_F(LiquifyUndoTest, EveryLiquifyKeepsItsOwnStrokesHoweverCloseTheyAreCaptured)
{
    // Both are captured within a millisecond in most of the rounds.
    for (int round = 0; round < 50 && !HasFailure(); ++round) {
        trace->setCacheDir(root().toStdString() + "/a" + std::to_string(round));
        addStroke(*m_first, 1.0F);
        addStroke(*m_second, 2.0F);
        trace->initTrace();
        const Radii first = radii(*m_first);
        const Radii second = radii(*m_second);
        trace->setCacheDir(root().toStdString() + "/b" + std::to_string(round));
        setAlpha(0.5F);
        trace->recordStatus();
        trace->undo();
        EXPECT_EQ(radii(*m_first), first) << round;
        EXPECT_EQ(radii(*m_second), second) << round;
    }
}

TEST_F(LiquifyUndoTest, StrokesDoNotGrowWhenTheCacheCannotBeWritten)
{
    trace->setCacheDir(TimelineSamples::picture()); // a file
    addStroke(*m_first, 1.0F);
    trace->initTrace();
    addStroke(*m_first, 2.0F);
    trace->recordStatus();
    setAlpha(0.5F);
    trace->recordStatus();
    for (int i = 0; i < 3; ++i) {
        trace->undo();
        trace->undo();
        printed(); // captures, too
        trace->redo();
        trace->redo();
        EXPECT_EQ(radii(*m_first), (Radii{1.0F, 2.0F})) << i;
        EXPECT_EQ(radii(*m_second), Radii{}) << i;
    }
}

TEST_F(LiquifyUndoTest, StrokesDoNotGrowWhenTheCacheIsGone)
{
    addStroke(*m_first, 1.0F);
    addStroke(*m_first, 1.0F);
    trace->initTrace();
    setAlpha(0.5F);
    trace->recordStatus();
    ASSERT_TRUE(QDir(root() + "/Norvel").removeRecursively());
    for (int i = 0; i < 3; ++i) {
        trace->undo();
        trace->redo();
        EXPECT_EQ(radii(*m_first), (Radii{1.0F, 1.0F})) << i;
    }
}

TEST_F(LiquifyUndoTest, PrintingTheStatusConfirmsThePendingStroke)
{
    trace->initTrace();
    addStroke(*m_first, 1.0F);
    EXPECT_TRUE(m_first->getConfirmedOperations().empty());
    printed();
    EXPECT_EQ(m_first->getConfirmedOperations().size(), 1U);
}
