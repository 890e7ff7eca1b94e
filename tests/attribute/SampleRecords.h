// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARFrameAttribute.h>
#include <norvel/attribute/RvARLabelAttribute.h>
#include <norvel/attribute/RvARLayerAttribute.h>
#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvMatteAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using EveryKind =
    ::testing::Types<norvel::RvAttribute, norvel::RvMediaAttribute, norvel::RvAudioAttribute,
                     norvel::RvDetectAttribute, norvel::RvEffectAttribute, norvel::RvMatteAttribute,
                     norvel::RvARAttribute, norvel::RvARLayerAttribute, norvel::RvARFilterAttribute,
                     norvel::RvARBeautyAttribute, norvel::RvARFrameAttribute,
                     norvel::RvARLabelAttribute, norvel::RvARLiquifyAttribute,
                     norvel::RvARMakeupAttribute>;

constexpr float quietNan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinite = std::numeric_limits<float>::infinity();

inline qkpar::KpARKernelParamFlag flag(int number)
{
    return static_cast<qkpar::KpARKernelParamFlag>(number);
}

inline qkpar::RvARMakeupARGroupData makeupGroup(std::int64_t id, std::string name,
                                                float alpha = 0.5F)
{
    qkpar::RvARMakeupARGroupData group;
    group.groupDataId = id;
    group.groupName = std::move(name);
    group.groupAlpha = alpha;
    group.entries = {{"texture", "red.png"}, {"blend", "multiply"}};
    return group;
}

inline qkpar::RvARFaceGroupData makeupFace(std::int64_t id,
                                           std::vector<qkpar::RvARMakeupARGroupData> groups,
                                           float suitAlpha = 0.5F)
{
    qkpar::RvARFaceGroupData face;
    face.faceId = id;
    face.suitAlpha = suitAlpha;
    face.groupDatas = std::move(groups);
    face.groupOrders = {"lips", "brows"};
    return face;
}

// fillRecord() gives every field of a kind and its parents a value that is not the default.

inline void fillRecord(norvel::RvAttribute& record)
{
    record.uuid = std::numeric_limits<std::uint64_t>::max();
    record.source = "/media/clip.mp4";
    record.startTime = -2500;
    record.duration = 40000;
    record.type = 3;
    record.zOrder = -7;
    record.alpha = 0.3F;
    record.speed = 1.5F;
    record.auxText = "tag";
}

inline void fillRecord(norvel::RvMediaAttribute& record)
{
    fillRecord(static_cast<norvel::RvAttribute&>(record));
    record.fileStartTime = 1.5F;
    record.width = 1920.0F;
    record.height = 1080.0F;
    record.positionX = 960.5F;
    record.positionY = -540.25F;
    record.scale = 0.1F;
    record.rotation = 90.0F;
}

inline void fillRecord(norvel::RvAudioAttribute& record)
{
    fillRecord(static_cast<norvel::RvAttribute&>(record));
    record.fileStartTime = 1'000'000.0F;
}

inline void fillRecord(norvel::RvDetectAttribute& record)
{
    fillRecord(static_cast<norvel::RvAttribute&>(record));
    record.mode = 4;
    record.modePath = "/models/face";
    record.range = 1;
    record.bindType = 2;
    record.target = {12, std::numeric_limits<std::uint64_t>::max()};
}

inline void fillRecord(norvel::RvEffectAttribute& record)
{
    fillRecord(static_cast<norvel::RvAttribute&>(record));
    record.range = 1;
    record.bindType = 2;
    record.target = {12, 11};
    record.detect = 18446744073709551614U;
}

inline void fillRecord(norvel::RvARAttribute& record)
{
    fillRecord(static_cast<norvel::RvEffectAttribute&>(record));
    record.globalParamConfiguration = "global";
    record.scriptParams = {{"text", "hello"}, {"colour", "red"}};
}

inline void fillRecord(norvel::RvARFilterAttribute& record)
{
    fillRecord(static_cast<norvel::RvARAttribute&>(record));
    record.filterAlpha = 0.75F;
    record.floatParams = {{flag(2), 0.3F}, {flag(10), 1.0F}};
    record.faceFloatParams = {{5, {{flag(3), 0.5F}}}, {-1, {}}};
    record.arFacePlists = {{5, "/faces/5.plist"}};
}

/// The mask that the filled records share. It is never read.
inline QImage* sampleMask()
{
    static QImage mask(2, 2, QImage::Format_ARGB32);
    return &mask;
}

inline void fillRecord(norvel::RvARBeautyAttribute& record)
{
    fillRecord(static_cast<norvel::RvARFilterAttribute&>(record));
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
    record.beautyActiveMaskImageRef = sampleMask();
    record.beautyMaskFaceId = 5;
    record.beautyMaskBrushType = "round";
    record.beautyActiveMaskImage = QImage(3, 3, QImage::Format_ARGB32);
    record.beautyActiveMaskImage.fill(0xff102030U);
}

inline void fillRecord(norvel::RvARLiquifyAttribute& record)
{
    fillRecord(static_cast<norvel::RvARBeautyAttribute&>(record));
    record.centerX = 0.1;
    record.centerY = 200.5;
    record.radius = 0.3F;
    record.strength = 0.5F;
    record.movePoints = {QPointF(1.5, 2.5), QPointF(-3.5, 1e300)};
    record.liquifyStyle = 2;
    record.effectPath = QStringLiteral("/cache/\u6db2");
}

inline void fillRecord(norvel::RvARMakeupAttribute& record)
{
    fillRecord(static_cast<norvel::RvARBeautyAttribute&>(record));
    record.suitAlpha = 0.3F;
    record.groupDatas = {makeupGroup(7, "lips"), makeupGroup(3, "brows", 0.1F)};
    record.groupFaceDatas = {makeupFace(5, {makeupGroup(7, "lips")}), makeupFace(-6, {}, 0.1F)};
    record.groupOrders = {"lips", "brows"};
}

template <class Kind>
Kind filledRecord()
{
    Kind record;
    fillRecord(record);
    return record;
}
