// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/FieldTable.h"

#include "support/DescriptionComparison.h"
#include "timeline/FieldKinds.h"

#include <norvel/trace/RvEditorTrace.h>

#include <rvkpcore/RvKpApplication.h>

#include <gtest/gtest.h>

namespace {

using namespace norvel;

/// The value that a live track has, by the framework's getter; and the one that a capture of it
/// gives. Empty where there is none.
struct LiveValues
{
    std::string track;
    std::string captured;
};

/// One field of one kind.
class FieldMeasurement
{
public:
    FieldMeasurement(const FieldKind& kind, const FieldChange& change)
        : m_kind(kind)
        , m_change(change)
    {
    }

    FieldRow measure(qrvkp::RvKpApplication& application) const
    {
        if (!m_change.change)
            return {m_kind.name,
                    m_change.name,
                    {fieldCell::noWay, fieldCell::noWay, trackCapture(), trackCreated(),
                     trackUpdated(), undo(application)}};
        return {m_kind.name,
                m_change.name,
                {compare(), json(), capture(), created(), updated(), undo(application)}};
    }

private:
    using Record = std::unique_ptr<RvAttribute>;

    /// The record before the change.
    Record unchanged() const
    {
        Record record = m_kind.record();
        if (m_change.prepare)
            m_change.prepare(*record);
        return record;
    }

    /// A copy of it with the change.
    Record changed(const RvAttribute& record) const
    {
        Record copy = m_kind.copy(record);
        m_change.change(*copy);
        EXPECT_NE(m_change.value(*copy), m_change.value(record)) << name() << " is not changed";
        return copy;
    }

    /// Fills a scene with a live track before the change.
    void place(FieldScene& scene) const
    {
        m_kind.place(scene);
        if (m_change.prepareLive)
            m_change.prepareLive(scene);
    }

    /// The same as a scene of its own.
    std::unique_ptr<FieldScene> sceneWithTrack() const
    {
        auto scene = std::make_unique<FieldScene>();
        place(*scene);
        return scene;
    }

    LiveValues liveValues(const FieldScene& scene) const
    {
        LiveValues values;
        const auto subject = scene.subject();
        if (subject && m_change.liveValue &&
            (!m_change.hasLiveValue || m_change.hasLiveValue(subject.get())))
            values.track = m_change.liveValue(*subject);
        const Record record = scene.capturedSubject();
        if (record && m_change.value)
            values.captured = m_change.value(*record);
        return values;
    }

    /// Changes the live track; false when there is no way to.
    bool changeLive(FieldScene& scene) const
    {
        const LiveValues before = liveValues(scene);
        // What was captured before the change is not to be overwritten by what is captured after
        // it, and captures of one millisecond share a folder.
        scene.changeCache();
        if (!m_change.changeLive || !m_change.changeLive(scene))
            return false;
        const LiveValues after = liveValues(scene);
        EXPECT_TRUE(before.track != after.track || before.captured != after.captured ||
                    !scene.capturedSubject())
            << name() << " is not changed on the live track";
        return true;
    }

    std::string name() const { return m_kind.name + ' ' + m_change.name; }

    std::string compare() const
    {
        const Record before = unchanged();
        const Record same = m_kind.copy(*before);
        const Record after = changed(*before);
        switch (before->compare(after.get())) {
        case ReturnSame:
            return fieldCell::no;
        case ReturnOtherRecord:
            return fieldCell::other;
        default:
            return before->compare(same.get()) == ReturnSame ? fieldCell::yes : fieldCell::always;
        }
    }

    std::string json() const
    {
        const Record before = unchanged();
        return changed(*before)->serialization() == before->serialization() ? fieldCell::no
                                                                            : fieldCell::yes;
    }

    std::string capture() const
    {
        const auto scene = sceneWithTrack();
        if (!scene->capturedSubject())
            return fieldCell::never;
        const LiveValues before = liveValues(*scene);
        if (!changeLive(*scene))
            return fieldCell::noWay;
        const LiveValues after = liveValues(*scene);
        const bool shows = before.captured != after.captured &&
                           (after.track.empty() || after.captured == after.track);
        return shows ? fieldCell::yes : fieldCell::no;
    }

    /// Makes a track of the record in a scene; false when none is made.
    static bool create(FieldScene& scene, RvAttribute& record)
    {
        const auto track = owned(RvAttributeUtility::createTrack(scene.timeline(), &record));
        if (track)
            scene.place(track.get());
        return track != nullptr;
    }

    std::string created() const
    {
        const Record before = unchanged();
        const Record after = changed(*before);
        FieldScene sceneBefore;
        FieldScene sceneAfter;
        if (!create(sceneBefore, *before))
            return fieldCell::never;
        if (!create(sceneAfter, *after))
            return fieldCell::none;
        const LiveValues valuesBefore = liveValues(sceneBefore);
        const LiveValues valuesAfter = liveValues(sceneAfter);
        // A track that has the value without being given it says nothing.
        return verdict(valuesBefore.track == m_change.value(*before) &&
                           valuesAfter.track == m_change.value(*after),
                       valuesBefore.captured == m_change.value(*before) &&
                           valuesAfter.captured == m_change.value(*after));
    }

    std::string updated() const
    {
        const Record before = unchanged();
        const Record after = changed(*before);
        FieldScene scene;
        if (!create(scene, *before))
            place(scene);
        if (!isEverUpdated(scene, *before))
            return fieldCell::never;
        const LiveValues valuesBefore = liveValues(scene);
        RvAttributeUtility::updateTrack(scene.timeline(), scene.subject().get(), after.get());
        const LiveValues valuesAfter = liveValues(scene);
        return verdict(valuesBefore.track != valuesAfter.track &&
                           valuesAfter.track == m_change.value(*after),
                       valuesBefore.captured != valuesAfter.captured &&
                           valuesAfter.captured == m_change.value(*after));
    }

    /// Whether the subject of a scene is told anything when it is brought up to the record.
    static bool isEverUpdated(const FieldScene& scene, RvAttribute& record)
    {
        const auto subject = scene.subject();
        return !callsOf([&] {
                    RvAttributeUtility::updateTrack(scene.timeline(), subject.get(), &record);
                }).empty();
    }

    static std::string verdict(bool onTrack, bool capturedBack)
    {
        if (capturedBack)
            return fieldCell::yes;
        return onTrack ? fieldCell::trackOnly : fieldCell::no;
    }

    std::string undo(qrvkp::RvKpApplication& application) const
    {
        const auto scene = sceneWithTrack();
        if (!scene->capturedSubject())
            return fieldCell::never;
        application.getPlayer()->setTimeLine(scene->timeline());
        const std::unique_ptr<RvEditorTrace> trace(RvEditorTrace::create(&application));
        const std::string result = undo(*trace, *scene);
        application.getPlayer()->setTimeLine(nullptr);
        trace->initTrace(); // frees what was stored
        return result;
    }

    std::string undo(RvEditorTrace& trace, FieldScene& scene) const
    {
        EXPECT_TRUE(trace.initTrace());
        const LiveValues before = liveValues(scene);
        if (!changeLive(scene))
            return fieldCell::noWay;
        EXPECT_TRUE(trace.recordStatus());
        trace.undo();
        if (!scene.subject())
            return fieldCell::lost;
        const LiveValues after = liveValues(scene);
        // By the track's own getter where there is one: it knows values that no capture shows.
        const bool isBack =
            before.track.empty() ? before.captured == after.captured : before.track == after.track;
        return isBack ? fieldCell::yes : fieldCell::no;
    }

    // The same for a value that no record has.

    /// The record that tells most of the subject of a scene.
    Record bestRecord(const FieldScene& scene) const
    {
        Record captured = scene.capturedSubject();
        return captured ? std::move(captured) : m_kind.record();
    }

    std::string trackCapture() const
    {
        const auto scene = sceneWithTrack();
        const Record before = scene->capturedSubject();
        if (!before)
            return fieldCell::never;
        EXPECT_TRUE(changeLive(*scene));
        return differences(*before, *scene->capturedSubject()).empty() ? fieldCell::no
                                                                       : fieldCell::yes;
    }

    std::string trackCreated() const
    {
        const auto scene = sceneWithTrack();
        EXPECT_TRUE(changeLive(*scene));
        FieldScene copy;
        if (!create(copy, *bestRecord(*scene)))
            return fieldCell::never;
        return liveValues(copy).track == liveValues(*scene).track ? fieldCell::yes : fieldCell::no;
    }

    std::string trackUpdated() const
    {
        const auto scene = sceneWithTrack();
        const std::string before = liveValues(*scene).track;
        const Record record = bestRecord(*scene);
        EXPECT_TRUE(changeLive(*scene));
        if (!isEverUpdated(*scene, *record)) // updates it, too
            return fieldCell::never;
        return liveValues(*scene).track == before ? fieldCell::yes : fieldCell::no;
    }

    const FieldKind& m_kind;
    const FieldChange& m_change;
};

} // namespace

std::vector<FieldRow> measureFields()
{
    qrvkp::RvKpApplication application;
    std::vector<FieldRow> rows;
    for (const FieldKind& kind : fieldKinds()) {
        for (const FieldChange& change : kind.changes)
            rows.push_back(FieldMeasurement(kind, change).measure(application));
    }
    return rows;
}
