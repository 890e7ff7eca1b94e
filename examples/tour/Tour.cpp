// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/Tour.h"

#include "support/DescriptionComparison.h"

#include <rvkpcore/RvCallLog.h>

#include <QDateTime>
#include <QElapsedTimer>

#include <thread>
#include <utility>

namespace {

/// Measures a step from its making on, and takes the log of its framework calls.
class Measurement
{
public:
    Measurement()
    {
        m_timer.start();
        qrvkp::RvCallLog::start();
    }

    void takeCalls(TourStep& step)
    {
        qrvkp::RvCallLog::stop();
        step.calls = qrvkp::RvCallLog::entries();
    }

    void takeTime(TourStep& step) const
    {
        step.milliseconds = static_cast<double>(m_timer.nsecsElapsed()) / 1e6;
    }

private:
    QElapsedTimer m_timer;
};

/// Waits for the clock to go on. The history names the folder with the strokes of a liquify track
/// by the millisecond: two edits within one, which no user makes, would share it, and the first of
/// them could not be brought back.
void awaitNextMillisecond()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    while (QDateTime::currentMSecsSinceEpoch() == now)
        std::this_thread::yield();
}

TourStep stepOf(const char* phase, const char* edit)
{
    TourStep step;
    step.phase = phase;
    step.edit = edit;
    return step;
}

} // namespace

Tour::Tour(TourTimeline& timeline, const std::string& cacheFolder, TourReport& report,
           TourDocuments& documents)
    : m_timeline(timeline)
    , m_report(report)
    , m_documents(documents)
    , m_trace(norvel::RvEditorTrace::create(&timeline.application()))
{
    m_trace->setCacheDir(cacheFolder);
    m_history.push_back(std::make_unique<Entry>());
    m_trace->initTrace(m_history.front().get());
    m_history.front()->description = m_timeline.capture();
}

Tour::~Tour()
{
    // The destructor of the trace does not delete its descriptions. Its start does, and without a
    // timeline no new one takes their place.
    m_timeline.player().setTimeLine(nullptr);
    m_trace->initTrace();
    m_trace->setCacheDir({});
}

bool Tour::run(const TourEdits& edits, const TourEdits& branch)
{
    return editAll(edits) && undoTo(0) && redoAll() && undoTo(edits.size() / 2) &&
           editAll(branch) && undoTo(0) && redoAll();
}

bool Tour::editAll(const TourEdits& edits)
{
    for (const TourEdit& next : edits) {
        if (!edit(next))
            return false;
    }
    return true;
}

bool Tour::undoTo(std::size_t entry)
{
    while (m_current > entry) {
        if (!undo())
            return false;
    }
    return true;
}

bool Tour::redoAll()
{
    while (m_current < lastEntry()) {
        if (!redo())
            return false;
    }
    return true;
}

bool Tour::edit(const TourEdit& edit)
{
    TourStep step = stepOf("edit", edit.name);
    m_history.resize(++m_current); // an edit takes the place of what could be redone
    m_history.push_back(std::make_unique<Entry>());
    Entry& entry = *m_history.back();
    entry.name = edit.name;

    awaitNextMillisecond();
    Measurement measurement;
    const bool made = applyLocked(edit);
    measurement.takeCalls(step);
    const bool recorded = m_trace->recordStatus(&entry);
    measurement.takeTime(step);
    entry.description = m_timeline.capture();

    if (!made)
        step.differences.emplace_back("the edit cannot be made");
    else if (differences(*m_history[m_current - 1]->description, *entry.description).empty())
        step.differences.emplace_back("the edit changes nothing that is described");
    if (!recorded)
        step.differences.emplace_back("the history records nothing");
    return finish(std::move(step));
}

bool Tour::applyLocked(const TourEdit& edit)
{
    // Nothing of a half-made edit is seen.
    m_timeline.player().lockPlayer();
    const bool made = edit.apply(m_timeline);
    m_timeline.timeline().invalidate();
    m_timeline.player().unlockPlayer();
    return made;
}

bool Tour::undo()
{
    TourStep step = stepOf("undo", m_history[m_current]->name);
    --m_current;
    awaitNextMillisecond();
    Measurement measurement;
    m_trace->undo();
    measurement.takeTime(step);
    measurement.takeCalls(step);
    return finish(std::move(step));
}

bool Tour::redo()
{
    ++m_current;
    TourStep step = stepOf("redo", m_history[m_current]->name);
    awaitNextMillisecond();
    Measurement measurement;
    m_trace->redo();
    measurement.takeTime(step);
    measurement.takeCalls(step);
    return finish(std::move(step));
}

bool Tour::finish(TourStep step)
{
    const Entry& entry = *m_history[m_current];
    if (m_trace->getCurrentOpaqueData() != &entry)
        step.differences.emplace_back("the history stands at another entry");
    if (m_trace->canUndo() != (m_current > 0))
        step.differences.emplace_back("the history has another beginning");
    if (m_trace->canRedo() != (m_current < lastEntry()))
        step.differences.emplace_back("the history has another end");
    const auto live = m_timeline.capture();
    for (std::string& difference : differences(*entry.description, *live))
        step.differences.push_back(std::move(difference));
    m_report.print(step);
    return m_documents.write(m_report.stepCount(), live->serialization());
}
