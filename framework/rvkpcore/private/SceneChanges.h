// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

#include <atomic>
#include <functional>

namespace qrvkp {

/// Hears that something which a player may show was changed.
///
/// A watch hears of the first change after it was armed and sleeps until it is armed again, so that
/// a thousand edits in a row cost one call and a thousand glances at a flag. Armed, told and
/// destroyed in any thread; the function is called in the thread that made the change, and must
/// not change anything itself.
class SceneWatch
{
public:
    explicit SceneWatch(std::function<void()> changed);
    ~SceneWatch();
    SceneWatch(const SceneWatch&) = delete;
    SceneWatch& operator=(const SceneWatch&) = delete;

    void arm();
    /// Sleeps from now on, whatever changes.
    void disarm();

    /// Tells the armed watches, which then sleep.
    RVKPCORE_EXPORT static void tellArmed();

private:
    const std::function<void()> m_changed;
    bool m_armed = false;
};

/// How many watches are armed.
RVKPCORE_EXPORT extern std::atomic<int> armedSceneWatches;

/// To be called by whatever changes what a player may show, after the change or just before it in
/// the same thread.
inline void sceneChanged()
{
    if (armedSceneWatches.load(std::memory_order_relaxed) > 0)
        SceneWatch::tellArmed();
}

} // namespace qrvkp
