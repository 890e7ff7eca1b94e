// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourEdits.h"

#include "tour/TourTimeline.h"

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARBeautyTrack.h>
#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvDetectionTrack.h>

#include <QImage>

// What the bridge between records and tracks can bring back decides how these edits are made:
//
// - The bridge only adds script parameters, parameters of all faces and of single ones, and the
//   files of faces: it takes none away. So the keys are set when a track is added, and later edits
//   change values. The files are no part of what records compare, nor is the order of the groups of
//   a makeup or the opacity of one face: each is changed together with a value that is.
// - The strength of a whole filter (filter alpha), the mode and the model of a detection, and the
//   source of any track are read but never written back: no edit changes them.
// - The coefficients of a gender are written but never read: no edit sets them.
// - A beauty that has files for single faces is brought back without its source, so none has both.
// - A mask can be handed over, but not taken away: a beauty has a mask from the start, and an edit
//   paints another one.
// - Labels are described, but neither updated nor brought back; AR frames and mattes are not even
//   described. The tour has none of them.
// - Layers are brought back without their values: see where the tour's layer is made.
// - A detection is looked up when the effect that uses it is brought back, so it is added before
//   that effect, and no edit deletes it.

namespace {

constexpr std::int64_t FirstFace = 1;
constexpr std::int64_t SecondFace = 2;
constexpr int BindType = 1;

/// Lets a detection or an effect act on a clip alone.
template <class Track>
bool bindToClip(const TourTimeline& tour, Track& track, int position)
{
    auto clip = tour.clip(position);
    // `bind` takes over the reference of the clip.
    return clip && track.bind(clip.release(), BindType);
}

bool addDetection(TourTimeline& tour)
{
    constexpr int FaceDetection = 3;
    const auto detection = adopt(qrvkp::RvDetectionTrack::create(FaceDetection, "models/face.bin"));
    return tour.addMixTrack(MixTrack::Detection, detection.get()) &&
           bindToClip(tour, *detection, 0);
}

bool bindDetectionToSecondClip(TourTimeline& tour)
{
    const auto detection = tour.mixTrack<qrvkp::RvDetectionTrack>(MixTrack::Detection);
    return detection && bindToClip(tour, *detection, 1);
}

bool addFilter(TourTimeline& tour)
{
    const auto filter = adopt(qkpar::RvARFilterTrack::create("ar/warm", 0, 4000));
    if (!tour.addMixTrack(MixTrack::Filter, filter.get()))
        return false;
    filter->setScriptParam("grain", "0.1");
    filter->setGlobalParamConfiguration("{\"colours\": \"warm\"}");
    filter->setFloatParam(qkpar::KpARParamSharpen, 0.25F);
    filter->setFloatParam(qkpar::KpARParamWhitenSkin, 0.5F);
    filter->setFloatParamByFaceId(qkpar::KpARParamBrightEye, 0.1F, FirstFace);
    filter->setFloatParamByFaceId(qkpar::KpARParamBrightEye, 0.9F, SecondFace);
    return filter->addARFacePlist("ar/faces/round.plist", FirstFace) &&
           filter->addARFacePlist("ar/faces/long.plist", SecondFace) &&
           bindToClip(tour, *filter, 1);
}

template <class Change>
bool changeFilter(const TourTimeline& tour, Change change)
{
    return changed(tour.mixTrack<qkpar::RvARFilterTrack>(MixTrack::Filter), change);
}

bool changeFilterValues(TourTimeline& tour)
{
    return changeFilter(tour, [](auto& filter) {
        filter.setScriptParam("grain", "0.35");
        filter.setGlobalParamConfiguration("{\"colours\": \"cold\"}");
        filter.setFloatParam(qkpar::KpARParamSharpen, 0.75F);
        filter.setFloatParamByFaceId(qkpar::KpARParamBrightEye, 0.4F, SecondFace);
    });
}

bool changeLookOfFace(TourTimeline& tour)
{
    return changeFilter(tour, [](auto& filter) {
        filter.addARFacePlist("ar/faces/oval.plist", FirstFace);
        filter.setFloatParamByFaceId(qkpar::KpARParamBrightEye, 0.3F, FirstFace);
    });
}

bool letFilterFollow(TourTimeline& tour)
{
    return changeFilter(tour, [](auto& filter) { filter.bindDynamic(); });
}

/// Lets an effect use the faces that the detection finds.
template <class Track>
bool useDetection(const TourTimeline& tour, MixTrack effect)
{
    const auto track = tour.mixTrack<Track>(effect);
    const auto detection = tour.mixTrack<qrvkp::RvDetectionTrack>(MixTrack::Detection);
    return track && track->bindDetect(detection.get());
}

bool letFilterUseDetection(TourTimeline& tour)
{
    return useDetection<qkpar::RvARFilterTrack>(tour, MixTrack::Filter);
}

/// A mask with a spot as wide as high.
QImage paintMask(int left, int top, int size)
{
    QImage mask(64, 64, QImage::Format_Grayscale8);
    mask.fill(0);
    for (int y = top; y < top + size; ++y) {
        for (int x = left; x < left + size; ++x)
            mask.setPixel(x, y, qRgb(255, 255, 255));
    }
    return mask;
}

bool addBeauty(TourTimeline& tour)
{
    const auto beauty = adopt(qkpar::RvARBeautyTrack::create("ar/beauty", 0, 4000));
    if (!tour.addMixTrack(MixTrack::Beauty, beauty.get()))
        return false;
    beauty->bindDynamic();
    beauty->setFloatParam(qkpar::KpARParamSmoothSkin, 0.5F);
    beauty->setBeautyType(qkpar::RvBeautyTypeBody);
    beauty->setBeautyMaskFaceId(FirstFace);
    beauty->setBeautyMaskBrushType("smooth");
    beauty->setBeautyActiveMaskImage(paintMask(8, 8, 16));
    return true;
}

template <class Change>
bool changeBeauty(const TourTimeline& tour, Change change)
{
    return changed(tour.mixTrack<qkpar::RvARBeautyTrack>(MixTrack::Beauty), change);
}

bool paintAnotherMask(TourTimeline& tour)
{
    return changeBeauty(tour, [](auto& beauty) {
        beauty.setBeautyMaskFaceId(SecondFace);
        beauty.setBeautyMaskBrushType("blemish");
        beauty.setBeautyActiveMaskImage(paintMask(20, 30, 10));
    });
}

bool letBeautyUseDetection(TourTimeline& tour)
{
    return useDetection<qkpar::RvARBeautyTrack>(tour, MixTrack::Beauty);
}

bool shapeFaces(TourTimeline& tour)
{
    return changeBeauty(tour, [](auto& beauty) {
        beauty.setAllFaceBeautyParam({{FirstFace, {{qkpar::KpARParamSlimFace, 0.3F}}},
                                      {SecondFace, {{qkpar::KpARParamSlimNose, 0.6F}}}});
        beauty.setAllBeautyAnattaForFaceControls({{qkpar::KpARParamSlimFace, true}});
        beauty.setEnableBeautyGenderDistinction(true);
        beauty.setApplyGenderToAR(true);
        beauty.loadCoeffientParameterConfig("{\"slim\": 0.5}");
    });
}

bool shapeBody(TourTimeline& tour)
{
    return changeBeauty(tour, [](auto& beauty) {
        beauty.setManualLongLegEnable(true);
        beauty.setManualLongLegRange({0.5F, 0.875F});
        beauty.setManualSlimHeadParam({0.5F, 0.25F, 0.3F});
        beauty.setMapPointsData({QPointF(1.5, 2.5), QPointF(30.0, 42.25)});
    });
}

qkpar::RvARMakeupARGroupData makeupGroup(std::int64_t id, const char* name, float alpha)
{
    return {id, name, alpha, {{"texture", std::string(name) + ".png"}, {"blend", "multiply"}}};
}

qkpar::RvARFaceGroupData makeupFace(std::int64_t faceId, float alpha, float lipsAlpha)
{
    return {faceId, alpha, {makeupGroup(1, "lips", lipsAlpha)}, {"lips"}};
}

bool addMakeup(TourTimeline& tour)
{
    const auto makeup = adopt(qkpar::RvARMakeupTrack::create("ar/makeup", 0, 4000));
    if (!tour.addMixTrack(MixTrack::Makeup, makeup.get()))
        return false;
    makeup->setSuitAlpha(0.8F);
    makeup->setARGroupDatas({makeupGroup(1, "lips", 0.5F), makeupGroup(2, "brows", 0.25F)});
    makeup->setAllARGroupOrder({"lips", "brows"});
    makeup->setARFaceGroupDatas({makeupFace(FirstFace, 1.0F, 0.5F)});
    return true;
}

template <class Change>
bool changeMakeup(const TourTimeline& tour, Change change)
{
    return changed(tour.mixTrack<qkpar::RvARMakeupTrack>(MixTrack::Makeup), change);
}

bool changeMakeupGroups(TourTimeline& tour)
{
    return changeMakeup(tour, [](auto& makeup) {
        makeup.setARGroupDatas({makeupGroup(1, "lips", 0.9F), makeupGroup(2, "brows", 0.25F),
                                makeupGroup(3, "blush", 0.1F)});
        makeup.setAllARGroupOrder({"blush", "lips", "brows"});
    });
}

bool changeMakeupOfFaces(TourTimeline& tour)
{
    return changeMakeup(tour, [](auto& makeup) {
        makeup.setSuitAlpha(0.6F);
        makeup.setAllARGroupOrder({"brows", "lips", "blush"});
        makeup.setARFaceGroupDatas(
            {makeupFace(FirstFace, 0.4F, 0.5F), makeupFace(SecondFace, 1.0F, 0.2F)});
    });
}

bool addLiquify(TourTimeline& tour)
{
    const auto liquify = adopt(qkpar::RvARLiquifyTrack::create("ar/liquify", 0, 4000));
    if (!tour.addMixTrack(MixTrack::Liquify, liquify.get()))
        return false;
    liquify->appendToLiquifyOperation(
        {100.0, 80.0, 30.0F, 0.5F, {QPointF(100.0, 80.0), QPointF(120.0, 85.5)}, 1});
    return true;
}

bool pushOnceMore(TourTimeline& tour)
{
    return changed(tour.mixTrack<qkpar::RvARLiquifyTrack>(MixTrack::Liquify), [](auto& liquify) {
        liquify.appendToLiquifyOperation(
            {50.25, 40.5, 12.0F, 0.75F, {QPointF(50.0, 40.0), QPointF(40.0, 40.0)}, 2});
        liquify.appendToLiquifyOperation(
            {10.0, 20.0, 8.0F, 1.0F, {QPointF(10.0, 20.0), QPointF(10.0, 35.0)}, 1});
    });
}

bool retitleLayer(TourTimeline& tour)
{
    return changed(tour.mixTrack<qkpar::RvARAttribsTrack>(MixTrack::Layer), [](auto& layer) {
        layer.setScriptParam("title", "An undone tour");
        layer.setGlobalParamConfiguration("{\"font\": \"sans\"}");
    });
}

bool bindLayer(TourTimeline& tour)
{
    const auto layer = tour.mixTrack<qkpar::RvARAttribsTrack>(MixTrack::Layer);
    if (!layer)
        return false;
    layer->setStartPos(100);
    layer->setDuration(2500);
    layer->setAlpha(0.9F);
    return bindToClip(tour, *layer, 0);
}

bool deleteLiquify(TourTimeline& tour)
{
    return tour.removeMixTrack(MixTrack::Liquify);
}

bool deleteBeauty(TourTimeline& tour)
{
    return tour.removeMixTrack(MixTrack::Beauty);
}

bool deleteFilter(TourTimeline& tour)
{
    return tour.removeMixTrack(MixTrack::Filter);
}

bool deleteOverlayPicture(TourTimeline& tour)
{
    return tour.removeMixTrack(MixTrack::OverlayPicture);
}

bool deleteSound(TourTimeline& tour)
{
    return tour.removeMixTrack(MixTrack::Sound);
}

// The binding of the detection ends with its clip, and comes back with it.
bool deleteClipOfDetection(TourTimeline& tour)
{
    return tour.timeline().removeGroup(tour.group(1).get());
}

} // namespace

TourEdits effectEdits()
{
    return {
        {"add a detection for the first clip", &addDetection},
        {"let the detection follow the second clip", &bindDetectionToSecondClip},
        {"add an AR filter with values for two faces", &addFilter},
        {"let the filter use the detection", &letFilterUseDetection},
        {"change the values of the filter", &changeFilterValues},
        {"change the look of a face", &changeLookOfFace},
        {"let the filter follow what lies below it", &letFilterFollow},
        {"add a beauty with a mask", &addBeauty},
        {"paint another mask", &paintAnotherMask},
        {"let the beauty use the detection", &letBeautyUseDetection},
        {"shape the faces", &shapeFaces},
        {"shape the body", &shapeBody},
        {"add a makeup", &addMakeup},
        {"change the groups of the makeup", &changeMakeupGroups},
        {"make up a second face", &changeMakeupOfFaces},
        {"add a liquify with a first stroke", &addLiquify},
        {"liquify with two more strokes", &pushOnceMore},
        {"change the title of the layer", &retitleLayer},
        {"bind the layer to the first clip", &bindLayer},
    };
}

TourEdits deletingEdits()
{
    return {
        {"delete the liquify", &deleteLiquify},
        {"delete the beauty", &deleteBeauty},
        {"delete the filter", &deleteFilter},
        {"delete the overlay picture", &deleteOverlayPicture},
        {"delete the sound", &deleteSound},
        {"delete the clip that the detection follows", &deleteClipOfDetection},
    };
}
