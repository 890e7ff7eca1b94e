// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LiteralReconciliation.h"
#include "NoStrokeFiles.h"
#include "ObjectNames.h"
#include "RandomCase.h"

#include "support/DescriptionComparison.h"
#include "support/TestEnvironment.h"

#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvCallLog.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

using norvel::adopt;
using norvel::RvAttributeUtility;
using norvel::RvTimeLineAttribute;
using Lines = std::vector<std::string>;

namespace {

constexpr std::uint64_t defaultSeed = 1;
constexpr std::uint64_t defaultCases = 5000;

/// A number from the environment, to repeat a case or to run more of them.
std::uint64_t number(const char* variable, std::uint64_t otherwise)
{
    bool isNumber = false;
    const qulonglong value = qgetenv(variable).toULongLong(&isNumber);
    return isNumber ? value : otherwise;
}

std::string describe(const qrvkp::RvITrack& track, const ObjectNames& names)
{
    std::string line = " [" + std::to_string(track.getTrackType());
    for (const auto value : {static_cast<long long>(names.idOf(track.getTrackID())),
                             track.getStartPos(), track.getOriginDuration(), track.getDuration(),
                             static_cast<long long>(track.getOriginZOrder())})
        line += ' ' + std::to_string(value);
    return line + ' ' + std::to_string(track.getAlpha()) + ' ' + track.getTag() + ']';
}

/// What stands where: also what no capture describes.
Lines structure(const qrvkp::RvKpTimeLine& timeline, const ObjectNames& names)
{
    Lines lines;
    for (const auto& group : adopt(timeline.getGroups())) {
        std::string line = "group " + std::to_string(names.idOf(group->getGroupID())) + " of " +
                           std::to_string(group->getDuration());
        for (const auto& track : adopt(group->getTracks()))
            line += describe(*track, names);
        lines.push_back(line);
    }
    for (const auto& track : adopt(timeline.getMixTracks()))
        lines.push_back("mix" + describe(*track, names));
    return lines;
}

/// The strokes of the liquify tracks, which their records do not tell.
Lines strokes(const qrvkp::RvKpTimeLine& timeline)
{
    Lines lines;
    for (const auto& track : adopt(timeline.getMixTracks())) {
        const auto liquify = adopt(qkpar::RvARLiquifyTrack::create(track->getContext()));
        if (!liquify)
            continue;
        std::string line = "strokes";
        for (const auto& stroke : liquify->getConfirmedOperations())
            line += ' ' + std::to_string(stroke.radius);
        lines.push_back(line);
    }
    return lines;
}

TimelineSamples::Description captured(qrvkp::RvKpTimeLine& timeline, const ObjectNames& names)
{
    auto description = TimelineSamples::capture(timeline);
    names.rename(*description);
    return description;
}

/// Differences in every field of the records, list position by list position.
Lines differencesInOrder(const std::vector<norvel::RvAttribute*>& a,
                         const std::vector<norvel::RvAttribute*>& b)
{
    Lines lines;
    if (a.size() != b.size())
        lines.push_back(std::to_string(a.size()) + " and " + std::to_string(b.size()));
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (!a[i] || !b[i]) {
            if (a[i] || b[i])
                lines.push_back(std::to_string(i) + ": null");
            continue;
        }
        for (const std::string& field : differences(*a[i], *b[i]))
            lines.push_back(std::to_string(i) + ": " + field);
    }
    return lines;
}

Lines differencesInOrder(const RvTimeLineAttribute& a, const RvTimeLineAttribute& b)
{
    Lines lines = differencesInOrder(a.mainAttribs, b.mainAttribs);
    for (const std::string& line : differencesInOrder(a.mixAttribs, b.mixAttribs))
        lines.push_back("mix " + line);
    return lines;
}

/// What one reconciliation did.
struct Step
{
    Lines calls;
    Lines structure;
    Lines strokes;
    TimelineSamples::Description captured;
};

using UpdateTimeLine = void (*)(qrvkp::RvKpTimeLine*, const RvTimeLineAttribute*,
                                const RvTimeLineAttribute*);

class Run
{
public:
    Run(const RandomCase& randomCase, UpdateTimeLine update)
        : m_case(randomCase)
        , m_update(update)
    {
        const long long liveBefore = qrvkp::RvRef::liveCount();
        m_timeline = randomCase.live();
        for (const auto& group : adopt(m_timeline->getGroups()))
            m_names.see(group->getGroupID());
        // There, back, and there again: the live timeline of the later steps is what is left of
        // the former.
        step(randomCase.first(), randomCase.second());
        step(randomCase.second(), randomCase.first());
        step(randomCase.first(), randomCase.second());
        m_timeline.reset();
        m_leaked = qrvkp::RvRef::liveCount() - liveBefore;
    }

    const std::vector<Step>& steps() const { return m_steps; }
    long long leaked() const { return m_leaked; }

private:
    void step(const RvTimeLineAttribute& from, const RvTimeLineAttribute& to)
    {
        qrvkp::RvCallLog::start();
        m_update(m_timeline.get(), &from, &to);
        qrvkp::RvCallLog::stop();
        Step done;
        done.calls = m_names.rename(qrvkp::RvCallLog::entries());
        done.structure = structure(*m_timeline, m_names);
        done.captured = captured(*m_timeline, m_names);
        done.strokes = strokes(*m_timeline);
        m_steps.push_back(std::move(done));
        expectEqualLookups();
    }

    /// The lookups of the library find what a plain walk finds.
    void expectEqualLookups() const
    {
        qrvkp::RvKpTimeLine* timeline = m_timeline.get();
        for (std::uint64_t id = 0; id <= m_case.largestId() + 1; ++id) {
            const auto contextOf = [](const auto& found) {
                return found ? found->getContext() : nullptr;
            };
            EXPECT_EQ(adopt(RvAttributeUtility::getGroup(timeline, id)),
                      adopt(LiteralReconciliation::getGroup(timeline, id)));
            EXPECT_EQ(contextOf(adopt(RvAttributeUtility::getMainTrack(timeline, id))),
                      contextOf(adopt(LiteralReconciliation::getMainTrack(timeline, id))));
            EXPECT_EQ(contextOf(adopt(RvAttributeUtility::getMixTrack(timeline, id))),
                      contextOf(adopt(LiteralReconciliation::getMixTrack(timeline, id))));
        }
    }

    const RandomCase& m_case;
    UpdateTimeLine m_update;
    TimelineSamples::Timeline m_timeline;
    ObjectNames m_names;
    std::vector<Step> m_steps;
    long long m_leaked = 0;
};

/// The first line in which two lists differ, or nothing.
std::string firstDifference(const Lines& a, const Lines& b)
{
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (inA == a.end() && inB == b.end())
        return {};
    return "line " + std::to_string(inA - a.begin()) + ": " + (inA == a.end() ? "no more" : *inA) +
           " | " + (inB == b.end() ? "no more" : *inB);
}

/// Compares until the first step that differs: what follows from it tells nothing more.
void expectSameSteps(const Run& expected, const Run& actual)
{
    for (std::size_t i = 0; i < expected.steps().size() && !testing::Test::HasFailure(); ++i) {
        const Step& a = expected.steps()[i];
        const Step& b = actual.steps()[i];
        EXPECT_EQ(firstDifference(a.calls, b.calls), "") << "step " << i;
        EXPECT_EQ(firstDifference(a.structure, b.structure), "") << "step " << i;
        EXPECT_EQ(firstDifference(a.strokes, b.strokes), "") << "step " << i;
        EXPECT_EQ(differencesInOrder(*a.captured, *b.captured), Lines()) << "step " << i;
    }
}

void check(std::uint64_t seed)
{
    SCOPED_TRACE("NORVEL_RECONCILIATION_CASES=1 NORVEL_RECONCILIATION_SEED=" +
                 std::to_string(seed));
    const RandomCase randomCase(seed);
    std::optional<UnreportedLeaks> pause;
    if (randomCase.mayLeak())
        pause.emplace();

    const auto first = TimelineSamples::copyOf(randomCase.first());
    const auto second = TimelineSamples::copyOf(randomCase.second());
    const Run walk(randomCase, &LiteralReconciliation::updateTimeLine);
    const Run library(randomCase, &RvAttributeUtility::updateTimeLine);
    expectSameSteps(walk, library);
    EXPECT_EQ(differencesInOrder(*first, randomCase.first()), Lines()) << "description changed";
    EXPECT_EQ(differencesInOrder(*second, randomCase.second()), Lines()) << "description changed";

    EXPECT_EQ(walk.leaked(), library.leaked());
    if (!randomCase.mayLeak()) {
        EXPECT_EQ(library.leaked(), 0);
    }
    DeliberateLeak::allow(static_cast<int>(walk.leaked() + library.leaked()));
}

} // namespace

TEST(RandomReconciliationTest, MakesTheCallsOfThePlainWalk)
{
    const NoStrokeFiles noFiles;
    const std::uint64_t seed = number("NORVEL_RECONCILIATION_SEED", defaultSeed);
    const std::uint64_t cases = number("NORVEL_RECONCILIATION_CASES", defaultCases);
    for (std::uint64_t i = 0; i < cases; ++i) {
        check(seed + i);
        if (HasFailure())
            break; // the first one tells enough
    }
}
