// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QSizeF>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace rvengine {

/// Where the content of a layer stands on the canvas, in canvas px, origin at the bottom left, y
/// up.
struct Placement
{
    double width = 0.0;  ///< the content is stretched to it, before `scale`
    double height = 0.0; ///< the content is stretched to it, before `scale`
    QPointF center;
    double scale = 1.0;
    double rotation = 0.0; ///< degrees, clockwise as seen
};

/// The volume of a clip from a time within it on.
struct VolumePoint
{
    long long time = 0; ///< ms from the start of the clip
    float volume = 1.0F;

    bool operator==(const VolumePoint& other) const
    {
        return time == other.time && volume == other.volume;
    }
};

/// The shape of a path matte, wherever its centre is.
struct MatteShape
{
    QPainterPath path;    ///< px of its own box, origin at the top left, y down
    QSizeF box;           ///< its middle is put on the centre of the matte
    double scale = 1.0;   ///< canvas px for each px of the box
    double feather = 0.0; ///< how wide the edge is, in percent of half the shorter side of the box
    /// Nothing is seen outside of the box. Otherwise the border of the box goes on without end.
    bool limitedToBox = true;
};

/// One stroke that pushes the pixels of a picture about, in px of that picture, origin at the top
/// left, y down.
struct LiquifyStroke
{
    QPointF center;
    QPointF from;          ///< a push goes from here ...
    QPointF to;            ///< ... to here
    double radius = 0.0;   ///< px around the centre that the stroke moves
    double strength = 0.0; ///< 0 none to 1 full
    int style = 0;         ///< 0 push, 1 bloat, 2 pinch; others do nothing
};

enum class LayerKind {
    Video,
    Picture,
    Sound,
    Matte,
    Filter,
    Liquify,
};

/// What an effect acts on.
enum class EffectTarget {
    Canvas, ///< the finished picture
    Below,  ///< what lies below it
    Layer,  ///< one layer, that with the key `PlacedLayer::boundKey`
};

/// One track as it is rendered. Never changed once it is part of a scene.
struct Layer
{
    LayerKind kind = LayerKind::Video;
    std::uintptr_t key = 0; ///< the same for the same track in every scene
    std::string source;     ///< file, UTF-8

    long long start = 0;     ///< ms on the timeline, for a track of a group within the group
    long long duration = 0;  ///< ms on the timeline
    long long fileStart = 0; ///< ms of the file
    double speed = 1.0;      ///< ms of the file for each ms on the timeline
    int zOrder = 0;
    float alpha = 1.0F;
    Placement placement;
    std::vector<VolumePoint> volume; ///< by time; none is volume 1

    std::shared_ptr<const MatteShape> matte;
    QPointF matteCenter; ///< canvas px, y up
    std::vector<LiquifyStroke> strokes;
    float strength = 1.0F; ///< of a filter, 0 none to 1 full
};

/// The lane of the main line, whose layers follow one another and share what is opened for them. A
/// layer beside others has a lane of its own, its key.
constexpr std::uintptr_t MainLane = 0;

/// A layer at its time on the timeline.
struct PlacedLayer
{
    long long start = 0; ///< ms
    long long end = 0;   ///< ms, the first at which it is gone
    std::shared_ptr<const Layer> layer;

    EffectTarget target = EffectTarget::Canvas; ///< of an effect
    std::uintptr_t boundKey = 0; ///< the key of the layer on which such an effect acts

    bool isAt(long long time) const { return start <= time && time < end; }
};

/// A whole timeline at one moment of its editing. Never changed once it was handed to a renderer,
/// so that any thread may read it while the timeline is edited on.
struct Scene
{
    QSizeF canvas{1920.0, 1080.0};
    long long duration = 0;        ///< ms
    std::vector<PlacedLayer> main; ///< by start: one group after the other
    std::vector<PlacedLayer> mix;  ///< from the lowest to the topmost
};

using ScenePointer = std::shared_ptr<const Scene>;

} // namespace rvengine
