// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/SceneChanges.h>

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace qrvkp {

std::atomic<int> armedSceneWatches{0};

namespace {

struct Watches
{
    std::mutex mutex;
    std::vector<SceneWatch*> all;
};

Watches& watches()
{
    static Watches instance;
    return instance;
}

} // namespace

SceneWatch::SceneWatch(std::function<void()> changed)
    : m_changed(std::move(changed))
{
    const std::lock_guard lock(watches().mutex);
    watches().all.push_back(this);
}

SceneWatch::~SceneWatch()
{
    disarm();
    const std::lock_guard lock(watches().mutex);
    auto& all = watches().all;
    all.erase(std::remove(all.begin(), all.end(), this), all.end());
}

void SceneWatch::arm()
{
    const std::lock_guard lock(watches().mutex);
    if (!std::exchange(m_armed, true))
        ++armedSceneWatches;
}

void SceneWatch::disarm()
{
    const std::lock_guard lock(watches().mutex);
    if (std::exchange(m_armed, false))
        --armedSceneWatches;
}

void SceneWatch::tellArmed()
{
    const std::lock_guard lock(watches().mutex);
    for (SceneWatch* watch : watches().all) {
        if (!std::exchange(watch->m_armed, false))
            continue;
        --armedSceneWatches;
        watch->m_changed();
    }
}

} // namespace qrvkp
