// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "walk/TimelineState.h"
#include "walk/WalkEdits.h"

#include <norvel/trace/RvEditorTrace.h>

#include <QTemporaryDir>

#include <cstdint>

/// Edits a timeline at random, with undo, redo, branches and new beginnings, and checks all that
/// must hold after every step.
class EditWalk
{
public:
    EditWalk(std::uint64_t seed, WalkEdits::Scope scope, const WalkMedia& media);
    ~EditWalk();
    EditWalk(const EditWalk&) = delete;
    EditWalk& operator=(const EditWalk&) = delete;

    /// Makes steps until there were `steps` or one went wrong; test failures tell what.
    void run(int steps);

private:
    void makeStep();
    void edit();
    void move(int offset);
    void restart();
    /// Has the next captures save strokes to folders of their own, however soon they follow: those
    /// of one millisecond share theirs.
    void changeCache();
    /// Reads the live timeline.
    TimelineState read();
    /// Makes an edit, and keeps account of what it binds.
    void makeEdit();
    void remember();
    void check(const TimelineState& expected, const TimelineState& actual);
    void checkHistory();
    void checkLookups(const TimelineState& actual);
    void checkObjects(const TimelineState& actual);
    Description capture();
    int number(int below);

    std::mt19937_64 m_random;
    const WalkEdits::Scope m_scope;
    long long m_objectsBefore;
    QTemporaryDir m_cache;
    int m_caches = 0;
    qrvkp::RvKpApplication m_application;
    std::unique_ptr<norvel::RvEditorTrace> m_trace;
    WalkEdits m_edits;
    std::vector<Description> m_history;
    std::size_t m_index = 0;
    TimelineState m_state; ///< as it was after the last step
    std::uintptr_t m_nextOpaque = 1;
    /// What the trace keeps from before its last new beginning, oldest first.
    std::vector<std::uintptr_t> m_opaques;
    std::string m_log; ///< the latest steps, for the report of a failure
};
