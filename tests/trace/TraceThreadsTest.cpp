// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TraceFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <atomic>
#include <random>
#include <thread>

namespace {

constexpr int recordedStates = 12;
constexpr int threadCount = 4;
constexpr int operationsOfAThread = 150;

/// A host whose threads use one history at the same time. Only the history touches the timeline
/// meanwhile: a host that edits it keeps its own threads out.
class TraceThreadsTest : public TraceTest
{
protected:
    TraceThreadsTest()
    {
        // Whatever is made lazily is made before the threads start.
        TimelineSamples::picture();
    }

    /// A history of states that differ in values, groups, mix tracks and canvas sizes, in the
    /// middle of which the live timeline stands.
    void recordStates()
    {
        EXPECT_TRUE(trace->initTrace(opaque(1)));
        for (int i = 1; i < recordedStates; ++i) {
            edit(i);
            EXPECT_TRUE(trace->recordStatus(opaque(static_cast<std::uintptr_t>(i + 1))));
        }
        for (int i = 0; i < recordedStates / 2; ++i)
            trace->undo();
    }

    void edit(int i)
    {
        setAlpha(1.0F / static_cast<float>(i));
        config().setKpSize(100.0F * static_cast<float>(i), 50.0F);
        const std::uint64_t id = m_nextId++;
        switch (i % 3) {
        case 0:
            addMix(id);
            break;
        case 1: {
            std::vector<TimelineSamples::Track> tracks;
            tracks.push_back(TimelineSamples::track(norvel::RecordTypeImage, id));
            TimelineSamples::appendGroup(*timeline, tracks);
            break;
        }
        default:
            timeline->changeGroupPosition(
                norvel::adopt(norvel::RvAttributeUtility::getGroup(timeline.get(), 1)).get(),
                i % 2);
            break;
        }
    }

    /// One operation of a thread.
    void operate(std::mt19937& random, bool withStarts)
    {
        switch (random() % (withStarts ? 40 : 39)) {
        case 0:
        case 1:
        case 2:
            trace->recordStatus(opaque(random()));
            break;
        case 3:
            trace->setMaxRecordStatusCounts(static_cast<int>(random() % 5));
            break;
        case 4:
        case 5:
            trace->getCurrentOpaqueData();
            break;
        case 6:
        case 7:
        case 8:
            norvel::adopt(trace->getTrack(1));
            norvel::adopt(trace->getTrack(102)); // a mix track that comes and goes
            break;
        case 9:
            trace->canUndo();
            trace->canRedo();
            break;
        case 39:
            trace->initTrace(opaque(random()));
            break;
        default:
            if (random() % 2 == 0)
                trace->undo();
            else
                trace->redo();
            break;
        }
    }

    /// Lets the threads loose, all at once.
    void operateInThreads(unsigned seed, bool withStarts)
    {
        std::atomic<int> waiting{threadCount};
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([this, seed, withStarts, i, &waiting] {
                std::mt19937 random(seed * threadCount + static_cast<unsigned>(i));
                --waiting;
                while (waiting > 0)
                    std::this_thread::yield();
                for (int operation = 0; operation < operationsOfAThread; ++operation)
                    operate(random, withStarts);
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    }

    /// The stored and the live description that are printed, the mix tracks in the order of their
    /// ids: an undo brings a mix track back behind the others.
    std::array<QJsonObject, 2> descriptions()
    {
        const std::string text = printed();
        std::array<QJsonObject, 2> result;
        for (std::size_t i = 0; i < result.size(); ++i) {
            const std::string label =
                i == 0 ? "RvEditorTrace Attribute : " : "RvEditorTrace Timeline : ";
            const std::size_t start = text.find(label) + label.size();
            const std::size_t end = text.find("\n---", start);
            QJsonObject json =
                QJsonDocument::fromJson(QByteArray::fromStdString(text.substr(start, end - start)))
                    .object();
            EXPECT_FALSE(json.isEmpty());
            std::vector<QJsonObject> tracks;
            for (const QJsonValue& track : json["mixAttribs"].toArray())
                tracks.push_back(track.toObject());
            std::sort(tracks.begin(), tracks.end(), [](const auto& a, const auto& b) {
                return a["uuid"].toString() < b["uuid"].toString();
            });
            QJsonArray sorted;
            std::copy(tracks.begin(), tracks.end(), std::back_inserter(sorted));
            json["mixAttribs"] = sorted;
            result[i] = json;
        }
        return result;
    }

    /// At every entry the live timeline is as its description says, and the history has as many
    /// entries one way as the other.
    void expectConsistency()
    {
        const auto expectLiveAsDescribed = [this] {
            const auto [stored, live] = descriptions();
            EXPECT_EQ(stored, live);
        };
        expectLiveAsDescribed();
        for (int steps = redoSteps(); steps > 0; --steps) {
            trace->redo();
            expectLiveAsDescribed();
        }
        EXPECT_FALSE(trace->canRedo());
        const int steps = undoSteps();
        for (int i = 0; i < steps; ++i) {
            trace->undo();
            expectLiveAsDescribed();
        }
        EXPECT_FALSE(trace->canUndo());
        EXPECT_EQ(redoSteps(), steps);
        EXPECT_EQ(timeline->referenceCount(), 2) << "the test's and the player's";
    }

private:
    std::uint64_t m_nextId = 100;
};

} // namespace

TEST_F(TraceThreadsTest, StepsAndRecordsOneAtATime)
{
    for (unsigned round = 0; round < 15; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        recordStates();
        operateInThreads(round, false);
        expectConsistency();
    }
}

TEST_F(TraceThreadsTest, StartsAgainWhileOthersStepAndRecord)
{
    for (unsigned round = 0; round < 15; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        recordStates();
        operateInThreads(100 + round, true);
        expectConsistency();
    }
}

TEST_F(TraceThreadsTest, StepsOnceForEveryThreadThatFindsAStepToMake)
{
    // More threads than steps: some find that another one has made the last one meanwhile.
    for (int round = 0; round < 200; ++round) {
        trace->initTrace();
        setAlpha(round % 2 == 0 ? 0.5F : 1.0F);
        trace->recordStatus();
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i)
            threads.emplace_back([this] { trace->undo(); });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_FALSE(trace->canUndo());
        EXPECT_TRUE(trace->canRedo());
        threads.clear();
        for (int i = 0; i < threadCount; ++i)
            threads.emplace_back([this] { trace->redo(); });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_TRUE(trace->canUndo());
        EXPECT_FALSE(trace->canRedo());
    }
    expectConsistency();
}

TEST_F(TraceThreadsTest, WaitsForThePlayersLockBeforeAnUndoTouchesTheTimeline)
{
    trace->initTrace();
    setAlpha(0.5F);
    trace->recordStatus();

    player().lockPlayer();
    qrvkp::RvCallLog::start();
    std::thread undoing([this] { trace->undo(); });
    while (qrvkp::RvCallLog::count() == 0)
        std::this_thread::yield();
    EXPECT_EQ(qrvkp::RvCallLog::entries(), Calls{"RvKpPlayer::lockPlayer()"});
    EXPECT_EQ(alpha(), 0.5F);
    player().unlockPlayer();
    undoing.join();
    qrvkp::RvCallLog::stop();
    EXPECT_EQ(alpha(), 1.0F);
}
