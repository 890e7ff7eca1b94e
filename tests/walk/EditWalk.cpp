// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "walk/EditWalk.h"

#include "support/DescriptionComparison.h"
#include "walk/StepModel.h"

#include <norvel/timeline/RvAttributeUtility.h>

#include <rvkpcore/RvCallLog.h>

#include <gtest/gtest.h>

namespace {

void* pointerOf(std::uintptr_t opaque)
{
    return reinterpret_cast<void*>(opaque);
}

} // namespace

EditWalk::EditWalk(std::uint64_t seed, WalkEdits::Scope scope, const WalkMedia& media)
    : m_random(seed)
    , m_scope(scope)
    , m_objectsBefore(qrvkp::RvRef::liveCount())
    , m_trace(norvel::RvEditorTrace::create(&m_application))
    , m_edits(m_application, media, scope, m_random)
{
    const auto timeline = adopt(qrvkp::RvKpTimeLine::create());
    m_application.getPlayer()->setTimeLine(timeline.get());
    changeCache();
    restart();
}

EditWalk::~EditWalk()
{
    m_application.getPlayer()->setTimeLine(nullptr);
    m_trace->initTrace(); // frees the descriptions
    m_trace->setCacheDir({});
}

void EditWalk::run(int steps)
{
    for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step)
        makeStep();
    if (testing::Test::HasFailure())
        ADD_FAILURE() << "the latest steps: " << m_log;
}

void EditWalk::makeStep()
{
    changeCache();
    const int choice = number(100);
    if (choice < 50)
        edit();
    else if (choice < 75)
        move(-1);
    else if (choice < 98)
        move(1);
    else
        restart();
    if (m_log.size() > 2000)
        m_log.erase(0, m_log.size() - 1000);
}

void EditWalk::edit()
{
    const int edits = m_scope == WalkEdits::Scope::All ? 1 + number(3) : 1;
    for (int i = 0; i < edits; ++i)
        makeEdit();
    const std::uintptr_t opaque = m_nextOpaque++;
    ASSERT_TRUE(m_trace->recordStatus(pointerOf(opaque)));
    m_history.resize(m_index + 1);
    m_opaques.resize(m_index + 1);
    m_opaques.push_back(opaque);
    ++m_index;
    remember();
    checkHistory();
}

void EditWalk::move(int offset)
{
    const bool possible = offset < 0 ? m_index > 0 : m_index + 1 < m_history.size();
    ASSERT_EQ(offset < 0 ? m_trace->canUndo() : m_trace->canRedo(), possible);
    m_log += offset < 0 ? "; undo" : "; redo";
    TimelineState before = read();
    offset < 0 ? m_trace->undo() : m_trace->redo();
    changeCache();
    if (!possible) {
        check(before, read());
        return;
    }
    const auto& from = *m_history[m_index];
    m_index = offset < 0 ? m_index - 1 : m_index + 1;
    const auto& to = *m_history[m_index];
    const TimelineState expected = StepModel(std::move(before)).step(from, to);
    m_state = read();
    m_state.inheritExpected(expected);
    check(expected, m_state);
    if (m_scope == WalkEdits::Scope::Restorable) {
        for (const std::string& difference : differences(to, *capture()))
            ADD_FAILURE() << "not restored: " << difference;
    }
    checkHistory();
}

void EditWalk::restart()
{
    m_log += "; new beginning";
    const std::uintptr_t opaque = m_nextOpaque++;
    ASSERT_TRUE(m_trace->initTrace(pointerOf(opaque)));
    m_history.clear();
    m_opaques.push_back(opaque); // behind those from before, which the trace keeps
    m_index = 0;
    remember();
    checkHistory();
}

void EditWalk::changeCache()
{
    m_trace->setCacheDir(m_cache.filePath(QString::number(m_caches++)).toStdString());
}

TimelineState EditWalk::read()
{
    TimelineState state = TimelineState::read(m_application);
    state.inherit(m_state);
    return state;
}

void EditWalk::makeEdit()
{
    qrvkp::RvCallLog::start();
    m_log += "; " + m_edits.makeEdit();
    qrvkp::RvCallLog::stop();
    m_state = read();
    m_state.applyBindings(qrvkp::RvCallLog::entries());
}

void EditWalk::remember()
{
    m_history.push_back(capture());
    TimelineState expected = read();
    expected.showBindings();
    check(expected, read());
}

void EditWalk::check(const TimelineState& expected, const TimelineState& actual)
{
    for (const std::string& difference : expected.differencesTo(actual))
        ADD_FAILURE() << difference;
    checkObjects(actual);
    checkLookups(actual);
}

void EditWalk::checkHistory()
{
    EXPECT_EQ(m_trace->canUndo(), m_index > 0);
    EXPECT_EQ(m_trace->canRedo(), m_index + 1 < m_history.size());
    EXPECT_EQ(m_trace->getCurrentOpaqueData(), pointerOf(m_opaques[m_index]));
}

void EditWalk::checkLookups(const TimelineState& actual)
{
    for (const GroupState& group : actual.groups) {
        if (group.ids.empty())
            continue;
        const auto found = adopt(m_trace->getTrack(group.ids.front()));
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->getContext(), group.contexts.front());
    }
    for (const MixState& mix : actual.mixTracks) {
        const auto found = adopt(m_trace->getTrack(mix.id));
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->getContext(), mix.context);
    }
}

void EditWalk::checkObjects(const TimelineState& actual)
{
    std::size_t expected = 1 + actual.groups.size() + actual.mixTracks.size();
    for (const GroupState& group : actual.groups)
        expected += group.ids.size();
    EXPECT_EQ(qrvkp::RvRef::liveCount() - m_objectsBefore, static_cast<long long>(expected))
        << "what lives is the timeline with its groups and tracks";
}

Description EditWalk::capture()
{
    const auto timeline = adopt(m_application.getPlayer()->getTimeLine());
    const qrvkp::RvKpConfig* config = m_application.getRvKpConfig();
    return Description(norvel::RvAttributeUtility::createTimeLineAttribute(
        timeline.get(), config->getKpSizeWidth(), config->getKpSizeHeight()));
}

int EditWalk::number(int below)
{
    return static_cast<int>(m_random() % static_cast<std::uint64_t>(below));
}
