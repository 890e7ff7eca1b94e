// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "EffectCache.h"

namespace rvengine {

EffectCache::EffectCache(MonotonicClock now)
    : m_unreadable(std::move(now))
{
}

template <class Map, class Make>
auto& EffectCache::find(Map& map, const typename Map::key_type& key, Make&& make)
{
    auto entry = map.find(key);
    if (entry == map.end())
        entry = map.insert({key, {make(), m_frame}}).first;
    entry->second.usedIn = m_frame;
    return entry->second.value;
}

template <class Map>
void EffectCache::dropOld(Map& map) const
{
    for (auto entry = map.begin(); entry != map.end();)
        entry =
            entry->second.usedIn + PatienceInFrames < m_frame ? map.erase(entry) : std::next(entry);
}

const PathMatte& EffectCache::matte(const std::shared_ptr<const MatteShape>& shape,
                                    double pixelsPerCanvasPx)
{
    return find(m_mattes, {shape.get(), pixelsPerCanvasPx},
                [&] {
                    return Mask{shape, PathMatte(*shape, pixelsPerCanvasPx)};
                })
        .matte;
}

const ColorTable* EffectCache::table(const std::string& path)
{
    const auto known = m_tables.find(path);
    if (known != m_tables.end()) {
        known->second.usedIn = m_frame;
        return &known->second.value;
    }
    // An effect without a source, or with another kind of source, is nothing to warn about.
    constexpr const char* extension = ".cube";
    const QString name = QString::fromStdString(path);
    if (!name.endsWith(QLatin1String(extension), Qt::CaseInsensitive) || !m_unreadable.mayTry(path))
        return nullptr;
    auto table = ColorTable::load(path);
    m_unreadable.tried(path, table.has_value());
    if (!table)
        return nullptr;
    return &m_tables.insert({path, {std::move(*table), m_frame}}).first->second.value;
}

const LiquifyWarp& EffectCache::warp(const std::shared_ptr<const Layer>& layer, QSize pictureSize)
{
    return find(m_warps, {layer.get(), {pictureSize.width(), pictureSize.height()}},
                [&] {
                    return Warp{layer, LiquifyWarp(layer->strokes, pictureSize)};
                })
        .warp;
}

void EffectCache::endFrame()
{
    dropOld(m_mattes);
    dropOld(m_tables);
    dropOld(m_warps);
    ++m_frame;
}

} // namespace rvengine
