// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>
#include <norvel/timeline/RvTimeLineAttribute.h>
#include <norvel/trace/RvEditorCacheData.h>

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace qrvkp {
class RvITrack;
class RvKpApplication;
class RvKpPlayer;
} // namespace qrvkp

namespace norvel {

/// The undo/redo history of an editor.
///
/// Every entry is a description of the whole timeline, captured from the player's live timeline,
/// and a pointer of the host's that the trace never looks into. Undo and redo replay no commands:
/// they reconcile the live timeline from the current description to the one beside it, with the
/// player locked meanwhile.
///
/// The live timeline is whatever timeline the player has at that moment. While the same application
/// shows something else, for instance in a compare player, a host must not record, undo or redo:
/// that would work on the other timeline.
///
/// Thread-safe but for `getCurrentCacheData` and `setCacheDir`: every other operation is serialised
/// by the trace's own mutex. Failures are boolean results; a mutex that cannot be locked throws
/// `std::system_error`.
class NORVEL_EXPORT RvEditorTrace
{
public:
    /// A new empty history of the application's timeline, which the caller deletes; null for a null
    /// application. Application and player must outlive the trace.
    static RvEditorTrace* create(qrvkp::RvKpApplication* application);

    RvEditorTrace(const RvEditorTrace&) = delete;
    RvEditorTrace& operator=(const RvEditorTrace&) = delete;

    /// Does NOT delete the stored descriptions. A host that wants them freed takes the timeline
    /// away from the player and calls `initTrace` before.
    ~RvEditorTrace();

    /// Forgets the history and starts it with the live timeline as entry 0. False, with an empty
    /// history, when the player has no timeline.
    ///
    /// The host's pointers are NOT forgotten: `opaque` is put behind those from before, so after a
    /// second call `getCurrentOpaqueData` gives the oldest one at entry 0.
    bool initTrace(void* opaque);
    bool initTrace();

    /// Captures the live timeline as a new entry behind the current one, in place of the entries
    /// that could be redone. False and no change when the player has no timeline.
    bool recordStatus(void* opaque);
    bool recordStatus();

    /// Whether there is an entry before the current one, and a timeline to bring there.
    bool canUndo();
    /// Whether there is an entry behind the current one, and a timeline to bring there.
    bool canRedo();
    /// Brings the live timeline, and the configured canvas size, to the entry before the current
    /// one. Does nothing when `canUndo` is false.
    void undo();
    /// Brings them to the entry behind the current one. Does nothing when `canRedo` is false.
    void redo();

    /// The host's pointer at the current index; null while the history is empty.
    void* getCurrentOpaqueData();
    /// The folder that the most recent capture of a liquify track wrote. Not locked.
    RvEditorCacheData getCurrentCacheData() const;
    /// A new wrapper of the live track with the id, which the caller releases: a mix track, else
    /// the first track of a main group. Null when there is none.
    qrvkp::RvITrack* getTrack(std::size_t id);

    /// Sets the root folder of the undo caches, UTF-8, for the whole process. It is made when it is
    /// first needed. Not locked.
    void setCacheDir(std::string dir);
    /// Stores a maximum number of entries. The history does not consult it: it grows without bound.
    void setMaxRecordStatusCounts(int counts);

    /// Writes the current description and one captured from the live timeline to standard output,
    /// as JSON. Nothing while the history is empty.
    ///
    /// Changes the live timeline as every capture does: a liquify track's pending stroke is
    /// confirmed, and its strokes are saved to a new folder of the undo cache.
    void printStatus();

private:
    RvEditorTrace() = default;
    bool init(qrvkp::RvKpApplication* application);
    RvTimeLineAttribute* captureTimeLine() const;
    bool hasTimeLine() const;
    void deleteDescriptionsFrom(std::size_t index);
    void append(RvTimeLineAttribute* description, void* opaque);
    void stepTo(std::int32_t target);

    std::vector<RvTimeLineAttribute*> m_descriptions; ///< owned, see the destructor
    std::vector<void*> m_opaqueDatas;                 ///< the host's
    qrvkp::RvKpApplication* m_application = nullptr;  ///< not owned
    qrvkp::RvKpPlayer* m_player = nullptr;            ///< not owned
    std::int32_t m_maxRecordStatusCounts = -1;
    std::int32_t m_currentIndex = -1; ///< the entry that the live timeline matches; -1 for none
    std::mutex m_mutex;               ///< guards all of the above
};

} // namespace norvel
