// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "NoStrokeFiles.h"

#include "support/DescriptionComparison.h"
#include "support/TimelineSamples.h"

#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvFault.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <map>

using norvel::adopt;
using norvel::RvAttribute;
using norvel::RvAttributeUtility;
using norvel::RvTimeLineAttribute;
using Ids = std::vector<std::uint64_t>;

namespace {

constexpr std::uint64_t emptyGroup = 0;

/// Ids of the mix tracks by their record type: those on both sides, changed; those of the first
/// side alone; those of the second.
constexpr std::uint64_t changed = 100;
constexpr std::uint64_t gone = 200;
constexpr std::uint64_t created = 300;

/// The layer that the step to the second side creates: it has an id of its own, so no later step
/// finds it.
constexpr std::uint64_t createdLayer = created + norvel::RecordTypeARLayer;

/// Two descriptions between which everything happens that a reconciliation can do: every kind is
/// updated, created and removed, groups are moved, effects are bound to what is created.
class RichCase
{
public:
    RichCase()
    {
        saveStrokes(m_firstStrokes.path(), 10.0F);
        saveStrokes(m_secondStrokes.path(), 20.0F);
        fillMain();
        for (int type = norvel::RecordTypeUnknown; type <= norvel::RecordTypeARLiquify; ++type) {
            addMix(m_first, type, changed);
            addMix(m_first, type, gone);
            addMix(m_second, type, changed).alpha = 0.5F;
            addMix(m_second, type, created);
        }
        bindAll();
        setMasks(m_first, 1.0F);
        setMasks(m_second, 2.0F);
    }

    const RvTimeLineAttribute& first() const { return m_first; }
    const RvTimeLineAttribute& second() const { return m_second; }

private:
    static void saveStrokes(const QString& folder, float radius)
    {
        const auto track = adopt(qkpar::RvARLiquifyTrack::create({}, 0, 0));
        qkpar::RvARLiquifyOperation stroke;
        stroke.radius = radius;
        track->appendToLiquifyOperation(stroke);
        track->confirmCurrentLiquify();
        for (const std::uint64_t group : {changed, gone, created}) {
            track->setTrackID(group + norvel::RecordTypeARLiquify);
            EXPECT_TRUE(track->saveLiquifyConfig(folder.toLocal8Bit().toStdString()));
        }
    }

    void fillMain()
    {
        const auto add = [](RvTimeLineAttribute& description, int type, std::uint64_t id) {
            description.mainAttribs.push_back(TimelineSamples::record(type, id));
            return description.mainAttribs.back();
        };
        for (const std::uint64_t id : {1, 2})
            add(m_first, norvel::RecordTypeImage, id);
        add(m_first, norvel::RecordTypeVideo, 3);
        for (const std::uint64_t id : {4, 5})
            add(m_first, norvel::RecordTypeImage, id);
        add(m_second, norvel::RecordTypeImage, 4)->alpha = 0.5F;
        add(m_second, norvel::RecordTypeImage, 6);
        add(m_second, norvel::RecordTypeImage, 1);
        add(m_second, norvel::RecordTypeVideo, 7);
        add(m_second, norvel::RecordTypeVideo, 3)->duration = 500;
    }

    RvAttribute& addMix(RvTimeLineAttribute& description, int type, std::uint64_t group)
    {
        const std::uint64_t id = group + static_cast<std::uint64_t>(type);
        RvAttribute* record = TimelineSamples::record(type, id);
        description.mixAttribs.push_back(record);
        if (type == norvel::RecordTypeARLayer)
            record->source = "/layers/" + std::to_string(id); // what a created one is known by
        if (auto* filter = dynamic_cast<norvel::RvARFilterAttribute*>(record))
            filter->arFacePlists[1] = "/faces/" + std::to_string(&description == &m_first);
        if (auto* liquify = dynamic_cast<norvel::RvARLiquifyAttribute*>(record))
            liquify->effectPath =
                (&description == &m_first ? m_firstStrokes : m_secondStrokes).path();
        return *record;
    }

    template <class Record>
    static Record& mix(RvTimeLineAttribute& description, std::uint64_t group, int type)
    {
        const std::uint64_t id = group + static_cast<std::uint64_t>(type);
        const auto& list = description.mixAttribs;
        return dynamic_cast<Record&>(**std::find_if(
            list.begin(), list.end(), [id](const RvAttribute* each) { return each->uuid == id; }));
    }

    template <class Record>
    static Record& bind(RvTimeLineAttribute& description, std::uint64_t group, int type,
                        std::uint64_t target)
    {
        auto& record = mix<Record>(description, group, type);
        record.range = 1;
        record.target = {target};
        return record;
    }

    void bindAll()
    {
        using norvel::RvARFilterAttribute;
        using norvel::RvDetectAttribute;
        constexpr std::uint64_t oldDetection = changed + norvel::RecordTypeDetection;
        constexpr std::uint64_t newDetection = created + norvel::RecordTypeDetection;
        bind<RvDetectAttribute>(m_first, changed, norvel::RecordTypeDetection, 1);
        bind<RvDetectAttribute>(m_second, changed, norvel::RecordTypeDetection, 6);
        bind<RvDetectAttribute>(m_second, created, norvel::RecordTypeDetection, 7);
        bind<RvARFilterAttribute>(m_first, changed, norvel::RecordTypeARFilter, 1).detect =
            oldDetection;
        bind<RvARFilterAttribute>(m_second, changed, norvel::RecordTypeARFilter, 6).detect =
            newDetection;
        bind<RvARFilterAttribute>(m_first, gone, norvel::RecordTypeARFilter, 4).detect =
            oldDetection;
        bind<RvARFilterAttribute>(m_second, created, norvel::RecordTypeARFilter, 7).detect =
            oldDetection;
        bind<norvel::RvARLayerAttribute>(m_first, changed, norvel::RecordTypeARLayer, 1);
        bind<norvel::RvARLayerAttribute>(m_second, changed, norvel::RecordTypeARLayer, 3);
        mix<norvel::RvARMakeupAttribute>(m_second, changed, norvel::RecordTypeARMakeup).range = 2;
    }

    static void setMasks(RvTimeLineAttribute& description, float value)
    {
        for (RvAttribute* record : description.mixAttribs) {
            auto* beauty = dynamic_cast<norvel::RvARBeautyAttribute*>(record);
            if (!beauty)
                continue;
            beauty->coeffientParameterConfig = "coefficients " + std::to_string(value);
            beauty->beautyActiveMaskImage = QImage(3, 3, QImage::Format_ARGB32);
            beauty->beautyActiveMaskImage.fill(qRgb(static_cast<int>(value), 0, 0));
            beauty->beautyActiveMaskImageRef = &beauty->beautyActiveMaskImage;
            beauty->beautyMaskFaceId = 1;
        }
    }

    RvTimeLineAttribute m_first;
    RvTimeLineAttribute m_second;
    QTemporaryDir m_firstStrokes;
    QTemporaryDir m_secondStrokes;
};

/// The id by which the tests know a track: that of its record, also when the framework gave it one.
std::uint64_t knownId(std::uint64_t id, const std::string& source)
{
    const std::string layers = "/layers/";
    return source.rfind(layers, 0) == 0 ? std::stoull(source.substr(layers.size())) : id;
}

/// A live timeline at one moment.
struct State
{
    Ids main;
    Ids mix;
    TimelineSamples::Description captured;
    std::map<std::uint64_t, std::string> strokes; ///< of the liquify tracks

    explicit State(qrvkp::RvKpTimeLine& timeline)
        : main(TimelineSamples::mainIds(timeline))
        , captured(TimelineSamples::capture(timeline))
    {
        for (RvAttribute* record : captured->mixAttribs)
            record->uuid = knownId(record->uuid, record->source);
        for (const auto& track : adopt(timeline.getMixTracks())) {
            mix.push_back(knownId(track->getTrackID(), track->getTrackSource()));
            const auto liquify = adopt(qkpar::RvARLiquifyTrack::create(track->getContext()));
            if (!liquify)
                continue;
            for (const auto& stroke : liquify->getConfirmedOperations())
                strokes[track->getTrackID()] += std::to_string(stroke.radius) + ' ';
        }
    }

    /// The record of an id, or null when there is none or more than one.
    const RvAttribute* record(std::uint64_t id) const
    {
        const RvAttribute* found = nullptr;
        for (const auto* list : {&captured->mainAttribs, &captured->mixAttribs}) {
            for (const RvAttribute* each : *list) {
                if (each->uuid != id)
                    continue;
                if (found)
                    return nullptr;
                found = each;
            }
        }
        return found;
    }
};

/// How a state differs from the one that there is without a fault.
struct Difference
{
    Ids missing;
    Ids extra;
    Ids values; ///< tracks with other values

    Difference(const State& expected, const State& actual)
        : missing(without(all(expected), all(actual)))
        , extra(without(all(actual), all(expected)))
    {
        for (const std::uint64_t id : all(expected)) {
            const RvAttribute* a = expected.record(id);
            const RvAttribute* b = actual.record(id);
            const auto strokesOf = [id](const State& state) {
                const auto strokes = state.strokes.find(id);
                return strokes == state.strokes.end() ? std::string() : strokes->second;
            };
            if (a && b &&
                (!differences(*a, *b).empty() || strokesOf(expected) != strokesOf(actual)))
                values.push_back(id);
        }
    }

private:
    static Ids all(const State& state)
    {
        Ids ids = state.main;
        ids.insert(ids.end(), state.mix.begin(), state.mix.end());
        std::sort(ids.begin(), ids.end());
        return ids;
    }
    static Ids without(const Ids& ids, const Ids& others)
    {
        Ids rest;
        std::set_difference(ids.begin(), ids.end(), others.begin(), others.end(),
                            std::back_inserter(rest));
        return rest;
    }
};

/// The ids of the list that `others` has too, in its own order.
Ids restrictedTo(const Ids& ids, const Ids& others)
{
    Ids result;
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(result), [&](std::uint64_t id) {
        return std::find(others.begin(), others.end(), id) != others.end();
    });
    return result;
}

Ids idsOf(const std::vector<RvAttribute*>& records)
{
    Ids ids;
    for (const RvAttribute* record : records)
        ids.push_back(record->uuid);
    return ids;
}

/// The tracks that a description binds to a track, or that use it as their detection.
Ids boundTo(const RvTimeLineAttribute& description, std::uint64_t id)
{
    Ids ids;
    for (const RvAttribute* record : description.mixAttribs) {
        const auto* detection = dynamic_cast<const norvel::RvDetectAttribute*>(record);
        const auto* effect = dynamic_cast<const norvel::RvEffectAttribute*>(record);
        if ((detection && detection->target == Ids{id}) ||
            (effect && (effect->target == Ids{id} || effect->detect == id)))
            ids.push_back(record->uuid);
    }
    return ids;
}

/// A framework call that can fail, and how often at least the step of the rich case makes it.
struct FallibleCall
{
    const char* name;
    int least;
};

void PrintTo(const FallibleCall& call, std::ostream* stream)
{
    *stream << call.name;
}

std::string nameOfCall(std::string name)
{
    name.erase(std::remove(name.begin(), name.end(), ':'), name.end());
    return name;
}

std::string nameOfFallible(const testing::TestParamInfo<FallibleCall>& info)
{
    return nameOfCall(info.param.name);
}

std::string nameOfUncalled(const testing::TestParamInfo<const char*>& info)
{
    return nameOfCall(info.param);
}

class FaultTest : public testing::TestWithParam<FallibleCall>
{
protected:
    using Timeline = TimelineSamples::Timeline;

    static void update(const Timeline& timeline, const RvTimeLineAttribute& from,
                       const RvTimeLineAttribute& to)
    {
        RvAttributeUtility::updateTimeLine(timeline.get(), &from, &to);
    }

    /// What there is without a fault: after the step, after the step to where it is already, and
    /// after the step back.
    void walkWithoutFault()
    {
        const auto timeline = TimelineSamples::live(rich.first());
        update(timeline, rich.first(), rich.second());
        there.emplace_back(*timeline);
        update(timeline, rich.second(), rich.second());
        again.emplace_back(*timeline);
        update(timeline, rich.second(), rich.first());
        back.emplace_back(*timeline);
        const auto fresh = TimelineSamples::timeline();
        update(fresh, empty, rich.second());
        rebuilt.emplace_back(*fresh);
    }

    /// The step with its n-th call failing, and the steps after it. False when there is no n-th
    /// call.
    bool walkWithFault(int n)
    {
        const auto timeline = TimelineSamples::live(rich.first());
        qrvkp::RvFault::failNext(GetParam().name, n);
        update(timeline, rich.first(), rich.second());
        if (qrvkp::RvFault::isPending(GetParam().name)) {
            qrvkp::RvFault::clear();
            return false;
        }
        const State afterFault(*timeline);
        const Difference lost(there.front(), afterFault);
        expectOneLoss(lost, afterFault);

        update(timeline, rich.second(), rich.second());
        const State afterRepeat(*timeline);
        expectOrder(afterRepeat, lost);

        update(timeline, rich.second(), rich.first());
        expectRecovered(State(*timeline), lost);

        expectRebuilt(timeline, lost);
        return true;
    }

    /// One failing call costs one track at the most, and the bindings to it.
    void expectOneLoss(const Difference& lost, const State& state) const
    {
        const bool emptiesGroup = std::string(GetParam().name) == "RvKpGroup::addTrack";
        if (emptiesGroup) {
            ASSERT_EQ(lost.missing.size(), 1U);
            EXPECT_EQ(lost.extra, Ids{emptyGroup}) << "the group stands there without its track";
        } else {
            EXPECT_LE(lost.missing.size() + lost.extra.size(), 1U);
        }
        if (!lost.missing.empty()) {
            EXPECT_EQ(lost.values, boundTo(rich.second(), lost.missing.front()));
        } else {
            EXPECT_LE(lost.values.size(), lost.extra.empty() ? 1U : 0U);
        }

        const Ids expected = restrictedTo(there.front().main, state.main);
        if (std::string(GetParam().name) != "RvKpTimeLine::changeGroupPosition") {
            EXPECT_EQ(restrictedTo(state.main, there.front().main), expected);
        }
    }

    /// The same target once more puts the groups in order, and creates and removes nothing: for
    /// what the descriptions take as done there is nothing to do.
    void expectOrder(const State& state, const Difference& lost) const
    {
        const Difference now(again.front(), state);
        EXPECT_EQ(now.missing, lost.missing);
        EXPECT_EQ(now.extra, lost.extra);
        const Ids target = idsOf(rich.second().mainAttribs);
        EXPECT_EQ(restrictedTo(state.main, target), restrictedTo(target, state.main));
    }

    /// The step back brings everything to where it was. Only what the faulty step failed to take
    /// away stays, because no description names it any more; and a layer that it failed to create
    /// is not there to stay.
    void expectRecovered(const State& state, const Difference& lost) const
    {
        const Difference now(back.front(), state);
        EXPECT_EQ(now.missing, restrictedTo(lost.missing, {createdLayer}));
        EXPECT_EQ(now.extra, lost.extra);
        EXPECT_EQ(now.values, Ids());
        Ids main = back.front().main;
        main.insert(main.end(), lost.extra.begin(), lost.extra.end());
        Ids live = state.main;
        if (live.size() != main.size()) // what stayed is a mix track
            main = back.front().main;
        EXPECT_EQ(live, main);
    }

    /// Taken down by a description of what there is and built from nothing, everything that is
    /// described is as described.
    void expectRebuilt(const Timeline& timeline, const Difference& lost) const
    {
        update(timeline, *TimelineSamples::capture(*timeline), empty);
        const bool emptiesGroup = lost.extra == Ids{emptyGroup};
        EXPECT_EQ(TimelineSamples::mainIds(*timeline), emptiesGroup ? Ids{emptyGroup} : Ids());
        update(timeline, empty, rich.second());
        const State state(*timeline);
        EXPECT_EQ(idsOf(state.captured->mainAttribs), idsOf(rich.second().mainAttribs));
        EXPECT_EQ(idsOf(state.captured->mixAttribs), idsOf(rebuilt.front().captured->mixAttribs));
        EXPECT_EQ(differences(*rebuilt.front().captured, *state.captured),
                  std::vector<std::string>());
        EXPECT_EQ(state.strokes, rebuilt.front().strokes);
    }

    const NoStrokeFiles noFiles;
    const RichCase rich;
    const RvTimeLineAttribute empty;
    std::vector<State> there;
    std::vector<State> again;
    std::vector<State> back;
    std::vector<State> rebuilt;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Calls, FaultTest,
    testing::Values(
        // A creation from a record, and the wrappers of what is found by its id.
        FallibleCall{"RvSpriteTrack::create", 6}, FallibleCall{"RvKpTrack::create", 7},
        FallibleCall{"RvAudioTrack::create", 3}, FallibleCall{"RvDetectionTrack::create", 7},
        FallibleCall{"RvTrkMatteEffectTrack::createPathMatteTrack", 1},
        FallibleCall{"RvTrkMatteEffectTrack::create", 2}, FallibleCall{"RvITrack::create", 2},
        FallibleCall{"RvARBorderTrack::create", 2}, FallibleCall{"RvARFilterTrack::create", 3},
        FallibleCall{"RvARBeautyTrack::create", 3}, FallibleCall{"RvARMakeupTrack::create", 3},
        FallibleCall{"RvARAttribsTrack::create", 3}, FallibleCall{"RvARFrameTrack::create", 2},
        FallibleCall{"RvARLabelTrack::create", 2}, FallibleCall{"RvARLiquifyTrack::create", 3},
        FallibleCall{"RvKpGroup::create", 2},
        // What changes a place.
        FallibleCall{"RvKpGroup::addTrack", 2}, FallibleCall{"RvKpTimeLine::insertGroup", 2},
        FallibleCall{"RvKpTimeLine::changeGroupPosition", 3},
        FallibleCall{"RvKpTimeLine::removeGroup", 2}, FallibleCall{"RvKpTimeLine::addMixTrack", 10},
        FallibleCall{"RvKpTimeLine::removeMixTrack", 14},
        // What gives a track its values.
        FallibleCall{"RvDetectionTrack::bind", 2}, FallibleCall{"RvIEffectTrack::bind", 3},
        FallibleCall{"RvIEffectTrack::bindDetect", 2},
        FallibleCall{"RvARFilterTrack::addARFacePlist", 8},
        FallibleCall{"RvARBeautyTrack::loadCoeffientParameterConfig", 6},
        FallibleCall{"RvARBeautyTrack::loadBeautyMaskDatas", 6},
        FallibleCall{"RvARLiquifyTrack::loadLiquifyConfig", 2}),
    nameOfFallible);

TEST_P(FaultTest, CostsNoMoreThanTheTrackOfTheFailingCall)
{
    const auto first = TimelineSamples::copyOf(rich.first());
    const auto second = TimelineSamples::copyOf(rich.second());
    walkWithoutFault();
    int n = 1;
    for (bool wasCalled = true; wasCalled; ++n) {
        SCOPED_TRACE("call " + std::to_string(n));
        const long long liveBefore = qrvkp::RvRef::liveCount();
        wasCalled = walkWithFault(n);
        EXPECT_EQ(qrvkp::RvRef::liveCount(), liveBefore);
    }
    EXPECT_GE(n - 2, GetParam().least) << "calls of " << GetParam().name;
    EXPECT_EQ(differences(*first, rich.first()), std::vector<std::string>());
    EXPECT_EQ(differences(*second, rich.second()), std::vector<std::string>());
}

/// Calls that can fail and that no reconciliation makes.
class UncalledTest : public testing::TestWithParam<const char*>
{
};

INSTANTIATE_TEST_SUITE_P(Calls, UncalledTest,
                         testing::Values("RvKpTimeLine::create", "RvKpTimeLine::pushBackGroup",
                                         "RvKpGroup::removeTrack",
                                         "RvARLiquifyTrack::saveLiquifyConfig"),
                         nameOfUncalled);

TEST_P(UncalledTest, IsNotCalledByAReconciliation)
{
    const RichCase rich;
    const auto timeline = TimelineSamples::live(rich.first());
    qrvkp::RvFault::failNext(GetParam());
    RvAttributeUtility::updateTimeLine(timeline.get(), &rich.first(), &rich.second());
    RvAttributeUtility::updateTimeLine(timeline.get(), &rich.second(), &rich.first());
    EXPECT_TRUE(qrvkp::RvFault::isPending(GetParam()));
}
