// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/KindSamples.h"

#include "timeline/LiveTimeline.h"

#include <norvel/attribute/RvARFrameAttribute.h>
#include <norvel/attribute/RvARLabelAttribute.h>
#include <norvel/attribute/RvARLayerAttribute.h>
#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvMatteAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace norvel;

qkpar::KpARKernelParamFlag flag(int number)
{
    return static_cast<qkpar::KpARKernelParamFlag>(number);
}

void fill(RvAttribute& record)
{
    record.uuid = sampleId;
    record.source = "/effects/source";
    record.startTime = 250;
    record.duration = 4000;
    record.zOrder = 6;
    record.alpha = 0.5F;
    record.speed = 2.0F;
    record.auxText = "tag";
}

void fill(RvMediaAttribute& record)
{
    fill(static_cast<RvAttribute&>(record));
    record.fileStartTime = 1500.75F;
    record.width = 640.0F;
    record.height = 360.0F;
    record.positionX = 12.5F;
    record.positionY = -3.0F;
    record.scale = 1.5F;
    record.rotation = 90.0F;
}

void fill(RvAudioAttribute& record)
{
    fill(static_cast<RvAttribute&>(record));
    record.source = mediaFiles().sound;
    record.fileStartTime = 1500.75F;
}

void fill(RvDetectAttribute& record)
{
    fill(static_cast<RvAttribute&>(record));
    record.mode = 4;
    record.modePath = "/models/face";
    record.range = 1;
    record.bindType = 3;
    record.target = {sampleMainId, 12};
}

void fill(RvEffectAttribute& record)
{
    fill(static_cast<RvAttribute&>(record));
    record.range = 1;
    record.bindType = 3;
    record.target = {sampleMainId, 12};
    record.detect = sampleDetectionId;
}

void fill(RvARAttribute& record)
{
    fill(static_cast<RvEffectAttribute&>(record));
    record.globalParamConfiguration = "global";
    record.scriptParams = {{"text", "hello"}, {"colour", "red"}};
}

void fill(RvARFilterAttribute& record)
{
    fill(static_cast<RvARAttribute&>(record));
    record.filterAlpha = 0.75F;
    record.floatParams = {{flag(10), 1.0F}, {flag(2), 0.25F}};
    record.faceFloatParams = {{5, {{flag(3), 0.5F}, {flag(1), 0.125F}}}, {-1, {{flag(3), 1.0F}}}};
    record.arFacePlists = {{5, "/faces/5.plist"}, {-1, "/faces/all.plist"}};
}

void fill(RvARBeautyAttribute& record)
{
    fill(static_cast<RvARFilterAttribute&>(record));
    record.beautyType = qkpar::RvBeautyTypeBody;
    record.enableBeautyGenderDistinction = true;
    record.coeffientParameterConfig = "coefficients";
    record.genderParamCoeffientsA = {{flag(1), 0.25F}};
    record.genderParamCoeffientsB = {{flag(1), 0.5F}};
    record.applyGenderToAR = true;
    record.allFaceBeautyParam = {{5, {{flag(4), 0.5F}}}};
    record.allBeautyAnattaForFaceControls = {{flag(6), true}};
    record.manualLongLegRange = {0.25F, 0.75F};
    record.manualSlimHeadParam = {0.25F, 0.5F, 0.75F};
    record.manualLongLegEnable = true;
    record.mapPointsData = {QPointF(1.0, 2.0), QPointF(3.0, 4.0)};
    record.beautyActiveMaskImage = QImage(3, 2, QImage::Format_ARGB32);
    record.beautyActiveMaskImage.fill(0xff102030U);
    record.beautyActiveMaskImageRef = &record.beautyActiveMaskImage;
    record.beautyMaskFaceId = 5;
    record.beautyMaskBrushType = "round";
}

void fill(RvARMakeupAttribute& record)
{
    fill(static_cast<RvARBeautyAttribute&>(record));
    record.suitAlpha = 0.25F;
    qkpar::RvARMakeupARGroupData group;
    group.groupDataId = 7;
    group.groupName = "lips";
    group.groupAlpha = 0.5F;
    group.entries = {{"texture", "red.png"}};
    qkpar::RvARFaceGroupData face;
    face.faceId = 5;
    face.suitAlpha = 0.75F;
    face.groupDatas = {group};
    face.groupOrders = {"lips"};
    record.groupDatas = {group};
    record.groupFaceDatas = {face};
    record.groupOrders = {"lips", "brows"};
}

void fill(RvARLiquifyAttribute& record)
{
    fill(static_cast<RvARBeautyAttribute&>(record));
    record.centerX = 1.5;
    record.centerY = 2.5;
    record.radius = 30.0F;
    record.strength = 0.5F;
    record.movePoints = {QPointF(1.0, 2.0), QPointF(3.0, 4.0)};
    record.liquifyStyle = 2;
    record.effectPath = QStringLiteral("/nowhere/saved");
}

template <class Record, int type>
std::unique_ptr<RvAttribute> filled()
{
    auto record = std::make_unique<Record>();
    fill(*record);
    record->type = type;
    if (type == 2)
        record->source = mediaFiles().picture;
    if (type == 3)
        record->source = mediaFiles().video;
    return record;
}

template <int type>
qrvkp::RvITrack* live()
{
    return newLiveTrack(type);
}

using Calls = std::vector<std::string>;

Calls operator+(Calls first, const Calls& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

std::string quoted(const std::string& text)
{
    return '"' + text + '"';
}

// The calls of an update, kind by kind. The track is `it` until it is given the record's id.

Calls pictureValues()
{
    return {
        "RvITrack::setStartPos(it, 250)",
        "RvITrack::setDuration(it, 4000)",
        "RvITrack::setTrackID(it, 77)",
        "RvITrack::setZOrder(77, 6)",
        "RvITrack::setAlpha(77, 0.5)",
        "RvITrack::setSpeed(77, 2)",
        "RvITrack::setTag(77, \"tag\")",
        "RvIMediaTrack::setWidthAndHeight(77, 640, 360)",
        "RvIMediaTrack::setPosition(77, 12.5, -3)",
        "RvIMediaTrack::setScale(77, 1.5)",
        "RvIMediaTrack::setRotation(77, 90)",
    };
}

Calls videoValues()
{
    return pictureValues() + Calls{"RvKpTrack::setFileStartTime(77, 1500)"};
}

Calls soundValues()
{
    return {
        "RvITrack::setStartPos(it, 250)", "RvITrack::setDuration(it, 4000)",
        "RvITrack::setTrackID(it, 77)",   "RvITrack::setZOrder(77, 6)",
        "RvITrack::setAlpha(77, 0.5)",    "RvITrack::setSpeed(77, 2)",
        "RvITrack::setTag(77, \"tag\")",  "RvAudioTrack::setFileStartTime(77, 1500)",
    };
}

Calls detectionValues()
{
    return {
        "RvITrack::setStartPos(it, 250)",     "RvITrack::setDuration(it, 4000)",
        "RvITrack::setTrackID(it, 77)",       "RvITrack::setZOrder(77, 6)",
        "RvITrack::setAlpha(77, 0.5)",        "RvITrack::setSpeed(77, 2)",
        "RvITrack::setTag(77, \"tag\")",      "RvDetectionTrack::unbind(77)",
        "RvDetectionTrack::bind(77, 900, 3)",
    };
}

Calls matteValues()
{
    return {
        "RvITrack::setStartPos(it, 250)", "RvITrack::setDuration(it, 4000)",
        "RvITrack::setTrackID(it, 77)",   "RvITrack::setZOrder(77, 6)",
        "RvITrack::setAlpha(77, 0.5)",    "RvITrack::setSpeed(77, 2)",
        "RvITrack::setTag(77, \"tag\")",
    };
}

Calls layerValues()
{
    return {
        "RvITrack::setStartPos(it, 250)",
        "RvITrack::setDuration(it, 4000)",
        "RvITrack::setTrackID(it, 77)",
        "RvITrack::setZOrder(77, 6)",
        "RvITrack::setAlpha(77, 0.5)",
        "RvITrack::setSpeed(77, 2)",
        "RvITrack::setTag(77, \"tag\")",
        "RvARITrack::setScriptParam(77, \"colour\", \"red\")",
        "RvARITrack::setScriptParam(77, \"text\", \"hello\")",
        "RvARITrack::setGlobalParamConfiguration(77, \"global\")",
    };
}

Calls filterValues()
{
    return {
        "RvITrack::setStartPos(it, 250)",
        "RvITrack::setDuration(it, 4000)",
        "RvITrack::setTrackID(it, 77)",
        "RvITrack::setZOrder(77, 6)",
        "RvITrack::setAlpha(77, 0.5)",
        "RvITrack::setSpeed(77, 2)",
        "RvITrack::setTag(77, \"tag\")",
        "RvARITrack::setScriptParam(77, \"colour\", \"red\")",
        "RvARITrack::setScriptParam(77, \"text\", \"hello\")",
        "RvARITrack::setGlobalParamConfiguration(77, \"global\")",
        "RvARFilterTrack::setFloatParam(77, 2, 0.25)",
        "RvARFilterTrack::setFloatParam(77, 10, 1)",
        "RvARFilterTrack::setFloatParamByFaceId(77, 3, 1, -1)",
        "RvARFilterTrack::setFloatParamByFaceId(77, 1, 0.125, 5)",
        "RvARFilterTrack::setFloatParamByFaceId(77, 3, 0.5, 5)",
        "RvARFilterTrack::addARFacePlist(77, \"/faces/all.plist\", -1)",
        "RvARFilterTrack::addARFacePlist(77, \"/faces/5.plist\", 5)",
    };
}

Calls beautyValues()
{
    return filterValues() +
           Calls{
               "RvARBeautyTrack::setBeautyType(77, 2)",
               "RvARBeautyTrack::setKpARGenderParamCoeffients(77, 2, {1: 0.25})",
               "RvARBeautyTrack::setKpARGenderParamCoeffients(77, 1, {1: 0.5})",
               "RvARBeautyTrack::loadCoeffientParameterConfig(77, \"coefficients\")",
               "RvARBeautyTrack::setEnableBeautyGenderDistinction(77, true)",
               "RvARBeautyTrack::setApplyGenderToAR(77, true)",
               "RvARBeautyTrack::setAllFaceBeautyParam(77, {5: {4: 0.5}})",
               "RvARBeautyTrack::setAllBeautyAnattaForFaceControls(77, {6: true})",
               "RvARBeautyTrack::setManualLongLegEnable(77, true)",
               "RvARBeautyTrack::setMapPointsData(77, {(1, 2), (3, 4)})",
               "RvARBeautyTrack::setManualLongLegRange(77, 0.25, 0.75)",
               "RvARBeautyTrack::setManualSlimHeadParam(77, 0.25, 0.5, 0.75)",
               "RvARBeautyTrack::loadBeautyMaskDatas(77, 5, \"round\", image 3x2)",
           };
}

Calls makeupValues()
{
    return beautyValues() +
           Calls{
               "RvARMakeupTrack::setSuitAlpha(77, 0.25)",
               "RvARMakeupTrack::setAllARGroupOrder(77, {\"lips\", \"brows\"})",
               "RvARMakeupTrack::setARGroupDatas(77, {{7, \"lips\", 0.5, \"texture\": "
               "\"red.png\"}})",
               "RvARMakeupTrack::setARFaceGroupDatas(77, {{5, 0.75, {{7, \"lips\", 0.5, "
               "\"texture\": \"red.png\"}}, {\"lips\"}}})",
           };
}

Calls liquifyValues()
{
    return beautyValues() +
           Calls{
               "RvARLiquifyTrack::appendToLiquifyOperation(77, {1.5, 2.5, 30, 0.5, (1, 2), "
               "(3, 4), 2})",
               "RvARLiquifyTrack::loadLiquifyConfig(77, \"/nowhere/saved\")",
           };
}

/// The calls that bind an effect, called `id`, as the samples say.
Calls bindings(const std::string& id)
{
    return {
        "RvIEffectTrack::unbind(" + id + ")",
        "RvIEffectTrack::bind(" + id + ", 900, 3)",
        "RvIEffectTrack::bindDetect(" + id + ", 901)",
    };
}

Calls arCreation(const std::string& className, const std::string& source)
{
    return {className + "::create(" + quoted(source) + ", 250, 4000) -> it"};
}

std::vector<KindSample> makeKindSamples()
{
    const Calls bound = bindings("77");
    const std::string source = "/effects/source";
    return {
        {"Image", filled<RvMediaAttribute, 2>, live<2>,
         Calls{"RvSpriteTrack::create(" + quoted(mediaFiles().picture) + ", 1500, 4000) -> it"} +
             pictureValues(),
         pictureValues(), true},
        {"Video", filled<RvMediaAttribute, 3>, live<3>,
         Calls{"RvKpTrack::create(" + quoted(mediaFiles().video) + ", 1500, 4000, 1500) -> it"} +
             videoValues(),
         videoValues(), true},
        {"Audio", filled<RvAudioAttribute, 4>, live<4>,
         Calls{"RvAudioTrack::create(" + quoted(mediaFiles().sound) + ", 1500, 4000, 1500) -> it"} +
             soundValues(),
         soundValues(), true},
        {"Detection", filled<RvDetectAttribute, 5>, live<5>,
         Calls{"RvDetectionTrack::create(4, \"/models/face\") -> it"} + detectionValues(),
         detectionValues(), true},
        {"Matte",
         filled<RvMatteAttribute, 6>,
         live<6>,
         Calls{"RvTrkMatteEffectTrack::createPathMatteTrack(250, 4000) -> it"} + matteValues(),
         {},
         false},
        {"Filter", filled<RvARFilterAttribute, 7>, live<7>,
         arCreation("RvARFilterTrack", source) + filterValues() + bound, filterValues() + bound,
         true},
        // The faces of the sample have configuration files: the source is left out.
        {"Beauty", filled<RvARBeautyAttribute, 8>, live<8>,
         arCreation("RvARBeautyTrack", "") + beautyValues() + bound, beautyValues() + bound, true},
        {"Makeup", filled<RvARMakeupAttribute, 9>, live<9>,
         arCreation("RvARMakeupTrack", source) + makeupValues() + bound, makeupValues() + bound,
         true},
        // A new layer gets no values and keeps its own id.
        {"Layer", filled<RvARLayerAttribute, 10>, live<10>,
         arCreation("RvARAttribsTrack", source) + bindings("it"), layerValues() + bound, true},
        {"Frame", filled<RvARFrameAttribute, 11>, live<11>, {}, {}, false},
        {"Label", filled<RvARLabelAttribute, 12>, live<12>, {}, {}, true},
        {"Liquify", filled<RvARLiquifyAttribute, 13>, live<13>,
         arCreation("RvARLiquifyTrack", source) + liquifyValues() + bound, liquifyValues() + bound,
         true},
    };
}

} // namespace

const std::vector<std::string>& kindNames()
{
    static const std::vector<std::string> names{"Image", "Video",  "Audio",  "Detection",
                                                "Matte", "Filter", "Beauty", "Makeup",
                                                "Layer", "Frame",  "Label",  "Liquify"};
    return names;
}

const KindSample& kindSample(const std::string& name)
{
    static const std::vector<KindSample> samples = makeKindSamples();
    const auto sample = std::find_if(samples.begin(), samples.end(),
                                     [&](const KindSample& each) { return each.name == name; });
    if (sample == samples.end()) {
        ADD_FAILURE() << "no kind " << name;
        return samples.front();
    }
    return *sample;
}

qrvkp::RvITrack* newLiveTrack(int recordType)
{
    const std::string source = "/live/source";
    switch (recordType) {
    case 1:
        return qrvkp::RvITrack::create(0, 1000);
    case 2:
        return qrvkp::RvSpriteTrack::create(mediaFiles().picture, 0, 1000);
    case 3:
        return qrvkp::RvKpTrack::create(mediaFiles().video, 0, 1000, 0);
    case 4:
        return qrvkp::RvAudioTrack::create(mediaFiles().sound, 0, 1000, 0);
    case 5:
        return qrvkp::RvDetectionTrack::create(1, "/live/model");
    case 6:
        return qrvkp::RvTrkMatteEffectTrack::createPathMatteTrack(0, 1000);
    case 7:
        return qkpar::RvARFilterTrack::create(source, 0, 1000);
    case 8:
        return qkpar::RvARBeautyTrack::create(source, 0, 1000);
    case 9:
        return qkpar::RvARMakeupTrack::create(source, 0, 1000);
    case 10:
        return qkpar::RvARAttribsTrack::create(source, 0, 1000);
    case 11:
        return qkpar::RvARFrameTrack::create(source, 0, 1000);
    case 12:
        return qkpar::RvARLabelTrack::create(source, 0, 1000);
    case 13:
        return qkpar::RvARLiquifyTrack::create(source, 0, 1000);
    default:
        return nullptr;
    }
}
