// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourEdits.h"

#include "tour/TourTimeline.h"

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARLiquifyTrack.h>

namespace {

bool appendPicture(TourTimeline& tour)
{
    return tour.insertClip(tour.newPicture(0, 1500), tour.clipCount());
}

bool fadeLastClip(TourTimeline& tour)
{
    return changed(tour.clip(tour.clipCount() - 1), [](auto& clip) { clip.setAlpha(0.25F); });
}

bool recolourLayer(TourTimeline& tour)
{
    return changed(tour.mixTrack<qkpar::RvARAttribsTrack>(MixTrack::Layer),
                   [](auto& layer) { layer.setScriptParam("colour", "#00aaff"); });
}

bool addLiquify(TourTimeline& tour)
{
    const auto liquify = adopt(qkpar::RvARLiquifyTrack::create("ar/liquify", 0, 2000));
    if (!tour.addMixTrack(MixTrack::Liquify, liquify.get()))
        return false;
    liquify->appendToLiquifyOperation(
        {40.0, 60.0, 25.0F, 0.5F, {QPointF(40.0, 60.0), QPointF(70.0, 50.0)}, 3});
    return true;
}

bool turnOverlay(TourTimeline& tour)
{
    return changed(tour.mixTrack<qrvkp::RvIMediaTrack>(MixTrack::OverlayPicture),
                   [](auto& track) { track.setRotation(-90.0F); });
}

bool deleteFirstClip(TourTimeline& tour)
{
    return tour.timeline().removeGroup(tour.group(0).get());
}

void append(TourEdits& edits, const TourEdits& more)
{
    edits.insert(edits.end(), more.begin(), more.end());
}

} // namespace

TourEdits tourEdits()
{
    TourEdits edits;
    append(edits, mainLineEdits());
    append(edits, mixEdits());
    append(edits, effectEdits());
    append(edits, deletingEdits());
    return edits;
}

TourEdits branchEdits()
{
    return {
        {"append a picture clip", &appendPicture},
        {"fade the last clip", &fadeLastClip},
        {"recolour the layer", &recolourLayer},
        {"add a liquify with a stroke", &addLiquify},
        {"turn the overlay picture back", &turnOverlay},
        {"delete the first clip", &deleteFirstClip},
    };
}
