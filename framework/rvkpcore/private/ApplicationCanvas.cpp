// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/ApplicationCanvas.h>

#include <algorithm>
#include <mutex>
#include <vector>

namespace qrvkp {

namespace {

struct Canvases
{
    std::mutex mutex;
    std::vector<const ApplicationCanvas*> all; ///< the oldest first
};

Canvases& canvases()
{
    static Canvases instance;
    return instance;
}

} // namespace

CanvasSize currentCanvasSize()
{
    const std::lock_guard lock(canvases().mutex);
    const auto& all = canvases().all;
    return all.empty() ? CanvasSize() : all.front()->size();
}

ApplicationCanvas::ApplicationCanvas()
{
    const std::lock_guard lock(canvases().mutex);
    canvases().all.push_back(this);
}

ApplicationCanvas::~ApplicationCanvas()
{
    const std::lock_guard lock(canvases().mutex);
    auto& all = canvases().all;
    all.erase(std::remove(all.begin(), all.end(), this), all.end());
}

} // namespace qrvkp
