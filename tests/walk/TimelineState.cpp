// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "walk/TimelineState.h"

#include "support/DescriptionComparison.h"
#include "support/FrameworkRef.h"

#include <norvel/timeline/RvAttributeUtility.h>

#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvIEffectTrack.h>

#include <QString>
#include <QStringList>

#include <algorithm>
#include <set>
#include <typeinfo>

namespace {

template <class Kind>
Record cloneAs(const norvel::RvAttribute& record)
{
    if (typeid(record) != typeid(Kind))
        return nullptr;
    return std::make_unique<Kind>(static_cast<const Kind&>(record));
}

template <class... Kinds>
Record cloneAsOneOf(const norvel::RvAttribute& record)
{
    Record clone;
    static_cast<void>(((clone = cloneAs<Kinds>(record)) || ...));
    return clone;
}

/// Hands out the records of a list by id, in order.
class Records
{
public:
    explicit Records(const std::vector<norvel::RvAttribute*>& list)
        : m_list(list)
    {
    }

    Record take(std::uint64_t id)
    {
        if (m_next == m_list.size() || m_list[m_next]->uuid != id)
            return nullptr;
        return cloneRecord(*m_list[m_next++]);
    }

private:
    const std::vector<norvel::RvAttribute*>& m_list;
    std::size_t m_next = 0;
};

GroupState readGroup(const qrvkp::RvKpGroup& group, Records& records)
{
    GroupState state;
    state.group = &group;
    for (const auto& track : adopt(group.getTracks())) {
        state.contexts.push_back(track->getContext());
        state.ids.push_back(track->getTrackID());
    }
    if (!state.ids.empty())
        state.record = records.take(state.ids.front());
    return state;
}

std::uint64_t idOf(const FrameworkRef<qrvkp::RvITrack>& track)
{
    return track ? track->getTrackID() : 0;
}

/// What a detection or an effect says of its target.
template <class Binder>
BindingState readBinding(const Binder& binder)
{
    return {binder.getActionRange(), binder.getMediaBindType(), idOf(adopt(binder.getBindTrack())),
            0};
}

BindingState readBinding(const qrvkp::RvITrack& track)
{
    if (const auto* detection = dynamic_cast<const qrvkp::RvDetectionTrack*>(&track))
        return readBinding<qrvkp::RvDetectionTrack>(*detection);
    const auto* effect = dynamic_cast<const qrvkp::RvIEffectTrack*>(&track);
    if (!effect)
        return {};
    BindingState state = readBinding<qrvkp::RvIEffectTrack>(*effect);
    const auto detection = adopt(effect->getBindDetect());
    state.detection = detection ? detection->getTrackID() : 0;
    return state;
}

/// A call of the framework's log that binds or unbinds: its name and its ids.
struct BindingCall
{
    QString name;
    QStringList arguments;

    explicit BindingCall(const std::string& entry)
    {
        const QString text = QString::fromStdString(entry);
        name = text.section('(', 0, 0).section("::", 1);
        arguments = text.section('(', 1).section(')', 0, 0).split(", ");
    }
    std::uint64_t id(int index) const { return arguments.value(index).toULongLong(); }
};

void apply(const BindingCall& call, BindingState& asked)
{
    const std::uint64_t detection = asked.detection;
    if (call.name == "unbind")
        asked = {};
    else if (call.name == "bindDynamic")
        asked = {qrvkp::RvActionRangeDynamic, 0, 0, detection};
    else if (call.name == "bind")
        asked = {qrvkp::RvActionRangeTrack, static_cast<int>(call.id(2)), call.id(1), detection};
    else if (call.name == "bindDetect")
        asked.detection = call.id(1);
}

template <class Kind>
void describeTarget(Kind& record, const BindingState& shown)
{
    record.range = shown.range;
    record.bindType = shown.bindType;
    record.target.clear();
    if (shown.target != 0)
        record.target.push_back(shown.target);
}

void describe(norvel::RvAttribute* record, const BindingState& shown)
{
    if (auto* detection = dynamic_cast<norvel::RvDetectAttribute*>(record))
        describeTarget(*detection, shown);
    if (auto* effect = dynamic_cast<norvel::RvEffectAttribute*>(record)) {
        describeTarget(*effect, shown);
        effect->detect = shown.detection;
    }
}

MixState readMix(const qrvkp::RvITrack& track, Records& records)
{
    MixState state;
    state.shown = readBinding(track);
    state.context = track.getContext();
    state.id = track.getTrackID();
    state.trackType = track.getTrackType();
    state.record = records.take(state.id);
    return state;
}

class Report
{
public:
    void check(bool same, const std::string& what)
    {
        if (!same)
            m_lines.push_back(what);
    }

    void compareRecords(const Record& expected, const Record& actual, const std::string& where)
    {
        check(!expected == !actual, where + (actual ? ": described" : ": not described"));
        if (!expected || !actual)
            return;
        for (const std::string& field : differences(*expected, *actual))
            m_lines.push_back(where + ", type " + std::to_string(actual->type) + ": " + field);
    }

    std::vector<std::string> take() { return std::move(m_lines); }

private:
    std::vector<std::string> m_lines;
};

bool sameObject(const void* expected, const void* actual)
{
    return !expected || expected == actual;
}

void compareGroups(const GroupState& expected, const GroupState& actual, const std::string& where,
                   Report& report)
{
    report.check(sameObject(expected.group, actual.group), where + ": another group");
    report.check(expected.ids == actual.ids, where + ": other ids");
    if (expected.contexts.size() == actual.contexts.size()) {
        for (std::size_t i = 0; i < expected.contexts.size(); ++i)
            report.check(sameObject(expected.contexts[i], actual.contexts[i]),
                         where + ": another native track");
    }
    report.compareRecords(expected.record, actual.record, where);
}

void compareMix(const MixState& expected, const MixState& actual, const std::string& where,
                Report& report)
{
    report.check(sameObject(expected.context, actual.context), where + ": another native track");
    report.check(expected.trackType == actual.trackType, where + ": another type");
    report.check(expected.shown == actual.shown, where + ": bound otherwise");
    if (expected.id != 0) {
        report.check(expected.id == actual.id, where + ": another id");
        report.compareRecords(expected.record, actual.record, where);
        return;
    }
    Record record = cloneRecord(*expected.record);
    record->uuid = actual.id;
    report.compareRecords(record, actual.record, where);
}

} // namespace

Record cloneRecord(const norvel::RvAttribute& record)
{
    return cloneAsOneOf<
        norvel::RvMediaAttribute, norvel::RvAudioAttribute, norvel::RvDetectAttribute,
        norvel::RvARFilterAttribute, norvel::RvARBeautyAttribute, norvel::RvARMakeupAttribute,
        norvel::RvARLayerAttribute, norvel::RvARLabelAttribute, norvel::RvARLiquifyAttribute>(
        record);
}

TimelineState TimelineState::read(qrvkp::RvKpApplication& application)
{
    TimelineState state;
    state.width = application.getRvKpConfig()->getKpSizeWidth();
    state.height = application.getRvKpConfig()->getKpSizeHeight();
    const auto timeline = adopt(application.getPlayer()->getTimeLine());
    const Description description(norvel::RvAttributeUtility::createTimeLineAttribute(
        timeline.get(), state.width, state.height));
    Records mainRecords(description->mainAttribs);
    for (const auto& group : adopt(timeline->getGroups()))
        state.groups.push_back(readGroup(*group, mainRecords));
    Records mixRecords(description->mixAttribs);
    for (const auto& track : adopt(timeline->getMixTracks()))
        state.mixTracks.push_back(readMix(*track, mixRecords));
    return state;
}

void TimelineState::inherit(const TimelineState& before)
{
    for (MixState& mix : mixTracks) {
        for (const MixState& earlier : before.mixTracks) {
            if (earlier.context == mix.context)
                mix.asked = earlier.asked;
        }
    }
}

void TimelineState::inheritExpected(const TimelineState& expected)
{
    const std::size_t count = std::min(mixTracks.size(), expected.mixTracks.size());
    for (std::size_t i = 0; i < count; ++i)
        mixTracks[i].asked = expected.mixTracks[i].asked;
}

void TimelineState::applyBindings(const std::vector<std::string>& calls)
{
    for (const std::string& entry : calls) {
        const BindingCall call(entry);
        for (MixState& mix : mixTracks) {
            if (mix.id == call.id(0))
                apply(call, mix.asked);
        }
    }
}

void TimelineState::showBindings()
{
    std::set<std::uint64_t> ids;
    std::set<std::uint64_t> detections;
    for (const GroupState& group : groups)
        ids.insert(group.ids.begin(), group.ids.end());
    for (const MixState& mix : mixTracks) {
        ids.insert(mix.id);
        if (mix.trackType == qrvkp::RvTrackTypeDetection)
            detections.insert(mix.id);
    }
    for (MixState& mix : mixTracks) {
        mix.shown = mix.asked;
        if (mix.shown.range == qrvkp::RvActionRangeTrack && ids.count(mix.shown.target) == 0) {
            mix.shown.range = qrvkp::RvActionRangeAway;
            mix.shown.target = 0;
        }
        if (detections.count(mix.shown.detection) == 0)
            mix.shown.detection = 0;
        describe(mix.record.get(), mix.shown);
    }
}

std::vector<std::string> TimelineState::differencesTo(const TimelineState& actual) const
{
    Report report;
    report.check(width == actual.width && height == actual.height, "canvas size");
    report.check(groups.size() == actual.groups.size(), "number of groups");
    for (std::size_t i = 0; i < std::min(groups.size(), actual.groups.size()); ++i)
        compareGroups(groups[i], actual.groups[i], "group " + std::to_string(i), report);
    report.check(mixTracks.size() == actual.mixTracks.size(), "number of mix tracks");
    for (std::size_t i = 0; i < std::min(mixTracks.size(), actual.mixTracks.size()); ++i)
        compareMix(mixTracks[i], actual.mixTracks[i], "mix track " + std::to_string(i), report);
    return report.take();
}
