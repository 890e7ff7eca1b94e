// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/MonotonicClock.h>
#include <engine/media/UnreadableFiles.h>
#include <engine/scene/Scene.h>

#include "ColorTable.h"
#include "LiquifyWarp.h"
#include "PathMatte.h"

#include <QSize>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace rvengine {

/// What effects need and what takes long to make: masks, colour tables, displacements. Kept while
/// it is used. Not thread-safe.
class EffectCache
{
public:
    /// Longer than an effect is away when somebody works on it.
    static constexpr std::uint64_t PatienceInFrames = 150;

    explicit EffectCache(MonotonicClock now = std::chrono::steady_clock::now);

    /// The mask of a shape at that many output px for each canvas px.
    const PathMatte& matte(const std::shared_ptr<const MatteShape>& shape,
                           double pixelsPerCanvasPx);

    /// The colour table in a file, or null when there is none that can be read.
    const ColorTable* table(const std::string& path);

    /// The displacement of a liquify layer on pictures of that size.
    const LiquifyWarp& warp(const std::shared_ptr<const Layer>& layer, QSize pictureSize);

    /// A frame is finished: what was not used in the last `PatienceInFrames` is dropped.
    void endFrame();

private:
    template <class Value>
    struct Used
    {
        Value value;
        std::uint64_t usedIn; ///< the frame in which it was used last
    };
    struct Warp
    {
        std::shared_ptr<const Layer> layer; ///< keeps the address from being used again
        LiquifyWarp warp;
    };
    struct Mask
    {
        std::shared_ptr<const MatteShape> shape; ///< keeps the address from being used again
        PathMatte matte;
    };

    template <class Map, class Make>
    auto& find(Map& map, const typename Map::key_type& key, Make&& make);
    template <class Map>
    void dropOld(Map& map) const;

    std::map<std::pair<const MatteShape*, double>, Used<Mask>> m_mattes;
    std::map<std::string, Used<ColorTable>> m_tables;
    std::map<std::pair<const Layer*, std::pair<int, int>>, Used<Warp>> m_warps;
    UnreadableFiles m_unreadable;
    std::uint64_t m_frame = 1;
};

} // namespace rvengine
