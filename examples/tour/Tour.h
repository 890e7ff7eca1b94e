// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tour/TourDocuments.h"
#include "tour/TourEdits.h"
#include "tour/TourReport.h"
#include "tour/TourTimeline.h"

#include <norvel/trace/RvEditorTrace.h>

#include <memory>
#include <string>
#include <vector>

/// Leads a timeline through edits, undos and redos with an edit history, and looks after every step
/// whether the timeline is what the history holds.
///
/// The history does not hand out its descriptions. The tour makes one of its own right after each
/// recording, of the same timeline, and compares with that.
class Tour
{
public:
    /// Starts the history of the timeline, which must outlive the tour as report and documents do.
    /// `cacheFolder` (UTF-8) is where the history keeps the strokes of liquify tracks.
    Tour(TourTimeline& timeline, const std::string& cacheFolder, TourReport& report,
         TourDocuments& documents);
    /// Takes the timeline away from the player, to free the history.
    ~Tour();
    Tour(const Tour&) = delete;
    Tour& operator=(const Tour&) = delete;

    /// Makes the edits, undoes and redoes them all, undoes the second half of them, makes the
    /// `branch` in place of it, and undoes and redoes everything once more. False when a document
    /// could not be written: the tour ends there.
    bool run(const TourEdits& edits, const TourEdits& branch);

private:
    struct Entry
    {
        const char* name = ""; ///< of the edit that led here
        std::unique_ptr<norvel::RvTimeLineAttribute> description;
    };

    bool editAll(const TourEdits& edits);
    bool undoTo(std::size_t entry);
    bool redoAll();
    bool edit(const TourEdit& edit);
    bool undo();
    bool redo();
    bool applyLocked(const TourEdit& edit);
    bool finish(TourStep step);
    std::size_t lastEntry() const { return m_history.size() - 1; }

    TourTimeline& m_timeline;
    TourReport& m_report;
    TourDocuments& m_documents;
    std::unique_ptr<norvel::RvEditorTrace> m_trace;
    std::vector<std::unique_ptr<Entry>> m_history; ///< at addresses that the trace keeps, too
    std::size_t m_current = 0;                     ///< the entry where the trace should stand
};
