// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Threads.h"
#include "TrackKinds.h"
#include "support/TestMedia.h"

#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvKpGroup.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <atomic>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

using namespace qrvkp;
using namespace qkpar;

namespace {

/// One of everything, in a state in which every operation that can fail succeeds.
struct World
{
    World()
    {
        for (RvKpGroup* group : {first.get(), second.get()})
            timeline->pushBackGroup(group);
        first->addTrack(grouped.get());
        timeline->addMixTrack(mix.get());
        detection->bindDynamic();
        liquify->bindDetect(detection.get());
        liquify->appendToLiquifyOperation({1, 2, 3, 4, {}, 5});
        liquify->appendToLiquifyOperation({6, 7, 8, 9, {}, 10});
        QDir(folder.path()).mkdir("saved");
        liquify->saveLiquifyConfig(folderName("saved"));
        liquify->appendToLiquifyOperation({11, 12, 13, 14, {}, 15});
        liquify->loadCoeffientParameterConfig("before");
        liquify->addARFacePlist("before", 1);
        liquify->loadBeautyMaskDatas(1, nullptr, "before", QImage(2, 2, QImage::Format_ARGB32));
    }

    std::string folderName(const char* name) const
    {
        return (folder.path() + '/' + name).toLocal8Bit().toStdString();
    }

    /// All that the failing of any operation must leave as it is.
    std::string state() const
    {
        std::ostringstream text;
        for (const auto& group : adopt(timeline->getGroups()))
            text << group->getGroupID() << tracks(group->getTracks()) << '\n';
        text << spare->getGroupID() << tracks(spare->getTracks()) << '\n'
             << tracks(timeline->getMixTracks()) << '\n';
        text << binding(*detection) << binding(*liquify) << '\n';
        if (const auto bound = adopt(liquify->getBindDetect()))
            text << "detection " << bound->getTrackID() << '\n';
        text << liquify->getCoeffientParameterConfig() << ' '
             << liquify->getAllArFacePlists().size() << liquify->getAllArFacePlists()[1] << ' '
             << liquify->getBeautyMaskFaceId() << liquify->getBeautyMaskBrushType()
             << liquify->getBeautyActiveMaskImage().width() << '\n';
        for (const auto& stroke : liquify->getConfirmedOperations())
            text << stroke.centerX << ' ';
        text << liquify->getAppendOperation().centerX << '\n';
        text << QDir(folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size();
        return text.str();
    }

    Reference<RvKpTimeLine> timeline = adopt(RvKpTimeLine::create());
    Reference<RvKpGroup> first = adopt(RvKpGroup::create(1000));
    Reference<RvKpGroup> second = adopt(RvKpGroup::create(1000));
    Reference<RvKpGroup> spare = adopt(RvKpGroup::create(1000));
    Reference<RvITrack> grouped = newTrack();
    Reference<RvITrack> mix = newTrack();
    Reference<RvITrack> loose = newTrack();
    Reference<RvDetectionTrack> detection = adopt(RvDetectionTrack::create(1, ""));
    Reference<RvARLiquifyTrack> liquify = adopt(RvARLiquifyTrack::create("", 0, 1000));
    QTemporaryDir folder;

private:
    static std::string tracks(const std::vector<RvITrack*>& list)
    {
        std::string text = ":";
        for (const auto& track : adopt(list))
            text += ' ' + std::to_string(track->getTrackID());
        return text;
    }

    template <class Binder>
    static std::string binding(const Binder& binder)
    {
        const auto bound = adopt(binder.getBindTrack());
        return std::to_string(binder.getActionRange()) + '/' +
               std::to_string(binder.getMediaBindType()) + '/' +
               (bound ? std::to_string(bound->getTrackID()) : "none") + ' ';
    }
};

/// An operation that can fail; `call` gives whether it succeeded and releases what it made.
struct FaultCase
{
    std::string name;
    std::function<bool(World&)> call;
};

void PrintTo(const FaultCase& faultCase, std::ostream* stream)
{
    *stream << faultCase.name;
}

bool exists(RvRef* object)
{
    return adopt(object) != nullptr;
}

RvITrack* retained(const Reference<RvITrack>& track)
{
    track->retain();
    return track.get();
}

std::vector<FaultCase> operations()
{
    return {
        {"RvKpGroup::addTrack", [](World& w) { return w.spare->addTrack(w.loose.get()); }},
        {"RvKpGroup::removeTrack", [](World& w) { return w.first->removeTrack(w.grouped.get()); }},
        {"RvKpTimeLine::insertGroup",
         [](World& w) { return w.timeline->insertGroup(w.spare.get(), 0); }},
        {"RvKpTimeLine::pushBackGroup",
         [](World& w) { return w.timeline->pushBackGroup(w.spare.get()); }},
        {"RvKpTimeLine::changeGroupPosition",
         [](World& w) { return w.timeline->changeGroupPosition(w.first.get(), 1); }},
        {"RvKpTimeLine::removeGroup",
         [](World& w) { return w.timeline->removeGroup(w.first.get()); }},
        {"RvKpTimeLine::addMixTrack",
         [](World& w) { return w.timeline->addMixTrack(w.loose.get()); }},
        {"RvKpTimeLine::removeMixTrack",
         [](World& w) { return w.timeline->removeMixTrack(w.mix.get()); }},
        {"RvDetectionTrack::bind", [](World& w) { return w.detection->bind(retained(w.mix), 3); }},
        {"RvIEffectTrack::bind", [](World& w) { return w.liquify->bind(retained(w.mix), 3); }},
        {"RvIEffectTrack::bindDetect",
         [](World& w) {
             const auto other = adopt(RvDetectionTrack::create(2, ""));
             return w.liquify->bindDetect(other.get());
         }},
        {"RvARFilterTrack::addARFacePlist",
         [](World& w) { return w.liquify->addARFacePlist("after", 1); }},
        {"RvARBeautyTrack::loadCoeffientParameterConfig",
         [](World& w) { return w.liquify->loadCoeffientParameterConfig("after"); }},
        {"RvARBeautyTrack::loadBeautyMaskDatas",
         [](World& w) { return w.liquify->loadBeautyMaskDatas(2, nullptr, "after", QImage()); }},
        {"RvARLiquifyTrack::saveLiquifyConfig",
         [](World& w) { return w.liquify->saveLiquifyConfig(w.folderName("")); }},
        {"RvARLiquifyTrack::loadLiquifyConfig",
         [](World& w) { return w.liquify->loadLiquifyConfig(w.folderName("saved")); }},
    };
}

std::vector<FaultCase> creations()
{
    std::vector<FaultCase> cases{
        {"RvKpGroup::create", [](World&) { return exists(RvKpGroup::create(10)); }},
        {"RvKpTimeLine::create", [](World&) { return exists(RvKpTimeLine::create()); }},
    };
    for (const TrackKind& kind : trackKinds())
        cases.push_back({kind.creation, [kind](World&) { return exists(kind.make()); }});
    return cases;
}

std::vector<FaultCase> allCases()
{
    std::vector<FaultCase> cases = operations();
    for (FaultCase& creation : creations())
        cases.push_back(std::move(creation));
    return cases;
}

std::string caseName(const testing::TestParamInfo<FaultCase>& info)
{
    std::string name = info.param.name;
    return name.replace(name.find("::"), 2, "_");
}

class FaultTest : public testing::TestWithParam<FaultCase>
{
};

class OperationFaultTest : public FaultTest
{
};

class CreationFaultTest : public FaultTest
{
};

class WrappingFaultTest : public testing::TestWithParam<TrackKind>
{
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Calls, FaultTest, testing::ValuesIn(allCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Calls, OperationFaultTest, testing::ValuesIn(operations()), caseName);
INSTANTIATE_TEST_SUITE_P(Calls, CreationFaultTest, testing::ValuesIn(creations()), caseName);
INSTANTIATE_TEST_SUITE_P(Kinds, WrappingFaultTest, testing::ValuesIn(trackKinds()), kindName);

TEST_P(FaultTest, FailsAtTheCallThatWasAskedForAndOnlyOnce)
{
    const auto& [name, call] = GetParam();
    World first;
    World second;
    World third;
    World fourth;
    RvFault::failNext(name, 3);
    EXPECT_TRUE(call(first));
    EXPECT_TRUE(call(second));
    EXPECT_TRUE(RvFault::isPending(name));
    EXPECT_FALSE(call(third));
    EXPECT_FALSE(RvFault::isPending(name));
    EXPECT_TRUE(call(fourth));
}

TEST_P(FaultTest, AFailingCallChangesNothingAndLeaksNothing)
{
    World world;
    const std::string before = world.state();
    const long long liveBefore = RvRef::liveCount();
    RvFault::failNext(GetParam().name);
    EXPECT_FALSE(GetParam().call(world));
    EXPECT_EQ(world.state(), before);
    EXPECT_EQ(RvRef::liveCount(), liveBefore);
    EXPECT_TRUE(GetParam().call(world)) << "the failure stood in the way of the next call";
}

TEST_P(OperationFaultTest, ASucceedingCallChangesSomething)
{
    World world;
    const std::string before = world.state();
    EXPECT_TRUE(GetParam().call(world));
    EXPECT_NE(world.state(), before) << "the comparison of states sees nothing of this call";
}

TEST_P(OperationFaultTest, AFailingCallIsRecordedLikeASucceedingOne)
{
    World world;
    RvFault::failNext(GetParam().name);
    RvCallLog::start();
    EXPECT_FALSE(GetParam().call(world));
    const auto entries = RvCallLog::entries();
    ASSERT_FALSE(entries.empty());
    EXPECT_EQ(entries.back().rfind(GetParam().name + '(', 0), 0U) << entries.back();
}

TEST_P(CreationFaultTest, AFailingCreationIsRecordedWithNull)
{
    World world;
    RvFault::failNext(GetParam().name);
    RvCallLog::start();
    EXPECT_FALSE(GetParam().call(world));
    const auto entries = RvCallLog::entries();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].rfind(GetParam().name + '(', 0), 0U) << entries[0];
    const std::string end = ") -> null";
    ASSERT_GT(entries[0].size(), end.size());
    EXPECT_EQ(entries[0].substr(entries[0].size() - end.size()), end);
}

TEST_P(WrappingFaultTest, WrappingAHandleCountsAsACreation)
{
    const auto track = adopt(GetParam().make());
    const std::string name = std::string(GetParam().name) + "::create";
    const long long before = RvRef::liveCount();
    RvFault::failNext(name, 2);
    EXPECT_TRUE(adopt(GetParam().wrap(track->getContext())));
    EXPECT_EQ(GetParam().wrap(track->getContext()), nullptr);
    EXPECT_FALSE(RvFault::isPending(name));
    EXPECT_EQ(RvRef::liveCount(), before);
    EXPECT_TRUE(adopt(GetParam().wrap(track->getContext())));
}

TEST(RvFaultTest, NothingIsPendingUntilItIsAskedFor)
{
    EXPECT_FALSE(RvFault::isPending("RvITrack::create"));
    RvFault::failNext("RvITrack::create", 5);
    EXPECT_TRUE(RvFault::isPending("RvITrack::create"));
    EXPECT_FALSE(RvFault::isPending("RvKpTrack::create"));
}

TEST(RvFaultTest, ALaterRequestReplacesTheFormerOneOfItsName)
{
    RvFault::failNext("RvITrack::create", 1);
    RvFault::failNext("RvITrack::create", 2);
    EXPECT_TRUE(newTrack());
    EXPECT_FALSE(newTrack());
    EXPECT_TRUE(newTrack());
}

TEST(RvFaultTest, RequestsOfDifferentNamesStandSideBySide)
{
    RvFault::failNext("RvITrack::create");
    RvFault::failNext("RvKpGroup::create");
    EXPECT_FALSE(adopt(RvKpGroup::create(0)));
    EXPECT_TRUE(RvFault::isPending("RvITrack::create"));
    EXPECT_FALSE(newTrack());
    EXPECT_TRUE(adopt(RvKpGroup::create(0)));
}

TEST(RvFaultTest, ClearTakesBackEveryRequest)
{
    RvFault::failNext("RvITrack::create");
    RvFault::failNext("RvKpGroup::create", 3);
    RvFault::clear();
    EXPECT_FALSE(RvFault::isPending("RvITrack::create"));
    EXPECT_FALSE(RvFault::isPending("RvKpGroup::create"));
    EXPECT_TRUE(newTrack());
}

TEST(RvFaultTest, BelowOneIsNoRequest)
{
    RvFault::failNext("RvITrack::create", 0);
    RvFault::failNext("RvITrack::create", -3);
    EXPECT_FALSE(RvFault::isPending("RvITrack::create"));
    EXPECT_TRUE(newTrack());
}

TEST(RvFaultTest, ACallThatCannotFailCannotBeMadeTo)
{
    const auto track = newTrack();
    RvFault::failNext("RvITrack::setAlpha");
    track->setAlpha(0.5F);
    EXPECT_EQ(track->getAlpha(), 0.5F);
    EXPECT_TRUE(RvFault::isPending("RvITrack::setAlpha"));
}

TEST(RvFaultTest, ACallWithANullObjectCountsToo)
{
    World world;
    const std::vector<FaultCase> nullCalls{
        {"RvKpGroup::addTrack", [](World& w) { return w.first->addTrack(nullptr); }},
        {"RvKpGroup::removeTrack", [](World& w) { return w.first->removeTrack(nullptr); }},
        {"RvKpTimeLine::insertGroup", [](World& w) { return w.timeline->insertGroup(nullptr, 0); }},
        {"RvKpTimeLine::pushBackGroup",
         [](World& w) { return w.timeline->pushBackGroup(nullptr); }},
        {"RvKpTimeLine::changeGroupPosition",
         [](World& w) { return w.timeline->changeGroupPosition(nullptr, 0); }},
        {"RvKpTimeLine::removeGroup", [](World& w) { return w.timeline->removeGroup(nullptr); }},
        {"RvKpTimeLine::addMixTrack", [](World& w) { return w.timeline->addMixTrack(nullptr); }},
        {"RvKpTimeLine::removeMixTrack",
         [](World& w) { return w.timeline->removeMixTrack(nullptr); }},
        {"RvDetectionTrack::bind", [](World& w) { return w.detection->bind(nullptr, 0); }},
        {"RvIEffectTrack::bind", [](World& w) { return w.liquify->bind(nullptr, 0); }},
        {"RvIEffectTrack::bindDetect", [](World& w) { return w.liquify->bindDetect(nullptr); }},
    };
    for (const auto& [name, call] : nullCalls) {
        RvFault::failNext(name, 2);
        EXPECT_FALSE(call(world)) << name;
        EXPECT_TRUE(RvFault::isPending(name)) << name;
        EXPECT_FALSE(call(world)) << name;
        EXPECT_FALSE(RvFault::isPending(name)) << name;
    }
}

TEST(RvFaultTest, ExactlyOneOfTheCallsOfSeveralThreadsFails)
{
    constexpr int callCount = 1000;
    std::atomic<int> failures{0};
    RvFault::failNext("RvKpGroup::create", threadCount / 2 * callCount);
    inThreads([&](int) {
        for (int call = 0; call < callCount; ++call) {
            if (!adopt(RvKpGroup::create(call)))
                ++failures;
        }
    });
    EXPECT_EQ(failures, 1);
}
