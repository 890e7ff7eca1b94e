// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "walk/RecordOracle.h"

#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>

#include <algorithm>
#include <typeinfo>

namespace {

using namespace norvel;

/// The records differ in one of these fields, which both have when they are of their kind.
template <class Kind, class... Values>
bool differIn(const RvAttribute& a, const RvAttribute& b, Values Kind::*... fields)
{
    const auto* first = dynamic_cast<const Kind*>(&a);
    const auto* second = dynamic_cast<const Kind*>(&b);
    return first && second && (!(first->*fields == second->*fields) || ...);
}

bool differInCommon(const RvAttribute& a, const RvAttribute& b)
{
    // All but the tag.
    return a.source != b.source || a.startTime != b.startTime || a.duration != b.duration ||
           a.type != b.type || a.zOrder != b.zOrder || a.alpha != b.alpha || a.speed != b.speed;
}

bool differInClip(const RvAttribute& a, const RvAttribute& b)
{
    using R = RvMediaAttribute;
    return differIn(a, b, &R::fileStartTime, &R::width, &R::height, &R::positionX, &R::positionY,
                    &R::scale, &R::rotation) ||
           differIn(a, b, &RvAudioAttribute::fileStartTime);
}

bool differInBinding(const RvAttribute& a, const RvAttribute& b)
{
    using Detection = RvDetectAttribute;
    using Effect = RvEffectAttribute;
    return differIn(a, b, &Detection::mode, &Detection::modePath, &Detection::range,
                    &Detection::bindType, &Detection::target) ||
           differIn(a, b, &Effect::range, &Effect::bindType, &Effect::target, &Effect::detect);
}

bool differInFilter(const RvAttribute& a, const RvAttribute& b)
{
    // All but the configuration files of faces.
    using Filter = RvARFilterAttribute;
    return differIn(a, b, &RvARAttribute::scriptParams, &RvARAttribute::globalParamConfiguration) ||
           differIn(a, b, &Filter::filterAlpha, &Filter::floatParams, &Filter::faceFloatParams);
}

bool differInBeauty(const RvAttribute& a, const RvAttribute& b)
{
    // Masks are told apart by where their pictures are, not by what these show.
    using R = RvARBeautyAttribute;
    return differIn(a, b, &R::beautyType, &R::enableBeautyGenderDistinction,
                    &R::coeffientParameterConfig, &R::genderParamCoeffientsA,
                    &R::genderParamCoeffientsB, &R::applyGenderToAR, &R::allFaceBeautyParam,
                    &R::allBeautyAnattaForFaceControls, &R::manualLongLegEnable,
                    &R::manualLongLegRange, &R::manualSlimHeadParam, &R::mapPointsData,
                    &R::beautyMaskFaceId, &R::beautyMaskBrushType, &R::beautyActiveMaskImageRef);
}

bool differ(const qkpar::RvARMakeupARGroupData& a, const qkpar::RvARMakeupARGroupData& b)
{
    return a.groupAlpha != b.groupAlpha || a.groupDataId != b.groupDataId ||
           a.groupName != b.groupName || a.entries != b.entries;
}

bool differ(const std::vector<qkpar::RvARMakeupARGroupData>& a,
            const std::vector<qkpar::RvARMakeupARGroupData>& b)
{
    return !std::equal(a.begin(), a.end(), b.begin(), b.end(),
                       [](const auto& x, const auto& y) { return !differ(x, y); });
}

/// Faces count only where both are the same face, as opaque and with as many groups.
bool differInGroups(const qkpar::RvARFaceGroupData& a, const qkpar::RvARFaceGroupData& b)
{
    return a.faceId == b.faceId && a.suitAlpha == b.suitAlpha &&
           a.groupDatas.size() == b.groupDatas.size() && differ(a.groupDatas, b.groupDatas);
}

bool differInMakeup(const RvAttribute& a, const RvAttribute& b)
{
    const auto* first = dynamic_cast<const RvARMakeupAttribute*>(&a);
    const auto* second = dynamic_cast<const RvARMakeupAttribute*>(&b);
    if (!first || !second)
        return false;
    if (first->suitAlpha != second->suitAlpha || differ(first->groupDatas, second->groupDatas) ||
        first->groupFaceDatas.size() != second->groupFaceDatas.size())
        return true;
    for (std::size_t i = 0; i < first->groupFaceDatas.size(); ++i) {
        if (differInGroups(first->groupFaceDatas[i], second->groupFaceDatas[i]))
            return true;
    }
    return false;
}

bool differ(const RvAttribute& a, const RvAttribute& b)
{
    const bool isLiquify = typeid(a) == typeid(RvARLiquifyAttribute); // refreshed every time
    return isLiquify || differInCommon(a, b) || differInClip(a, b) || differInBinding(a, b) ||
           differInFilter(a, b) || differInBeauty(a, b) || differInMakeup(a, b);
}

} // namespace

RecordFate fateOf(const RvAttribute& record, const std::vector<RvAttribute*>& list)
{
    const auto found = std::find_if(list.begin(), list.end(), [&](const RvAttribute* each) {
        return each->uuid == record.uuid && typeid(*each) == typeid(record);
    });
    if (found == list.end())
        return RecordFate::Created;
    return differ(record, **found) ? RecordFate::Updated : RecordFate::Kept;
}
