// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARBeautyTrack.h>

#include <kparextension/private/ARCallText.h>
#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qkpar {

using qrvkp::calls::record;

RvARBeautyTrack::~RvARBeautyTrack() = default;

qrvkp::RvITrack* RvARBeautyTrack::wrap(std::shared_ptr<qrvkp::NativeTrack> native)
{
    return new RvARBeautyTrack(std::move(native));
}

RvARBeautyTrack* RvARBeautyTrack::create(void* context)
{
    return qrvkp::wrapContext<RvARBeautyTrack>("RvARBeautyTrack::create", context,
                                               qrvkp::RvTrackTypeARBeauty, &wrap);
}

RvARBeautyTrack* RvARBeautyTrack::create(const std::string& source, long long startPos,
                                         long long duration)
{
    constexpr const char* name = "RvARBeautyTrack::create";
    const auto native =
        withPlace(qrvkp::makeNative<NativeARBeautyTrack>(name, qrvkp::RvTrackTypeARBeauty, &wrap),
                  source, startPos, duration);
    return qrvkp::publish<RvARBeautyTrack>(name, native, source, startPos, duration);
}

RvBeautyType RvARBeautyTrack::getBeautyType() const
{
    return nativeAs<NativeARBeautyTrack>().beautyType;
}

void RvARBeautyTrack::setBeautyType(RvBeautyType type)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setBeautyType", beauty.id, type);
    beauty.beautyType = type;
}

bool RvARBeautyTrack::getEnableBeautyGenderDistinction() const
{
    return nativeAs<NativeARBeautyTrack>().genderDistinction;
}

void RvARBeautyTrack::setEnableBeautyGenderDistinction(bool enable)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setEnableBeautyGenderDistinction", beauty.id, enable);
    beauty.genderDistinction = enable;
}

bool RvARBeautyTrack::getApplyGenderToAR() const
{
    return nativeAs<NativeARBeautyTrack>().applyGenderToAR;
}

void RvARBeautyTrack::setApplyGenderToAR(bool apply)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setApplyGenderToAR", beauty.id, apply);
    beauty.applyGenderToAR = apply;
}

std::string RvARBeautyTrack::getCoeffientParameterConfig() const
{
    return nativeAs<NativeARBeautyTrack>().coefficientConfig;
}

bool RvARBeautyTrack::loadCoeffientParameterConfig(const std::string& configuration)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::loadCoeffientParameterConfig", beauty.id, configuration);
    if (qrvkp::shouldFail("RvARBeautyTrack::loadCoeffientParameterConfig"))
        return false;
    beauty.coefficientConfig = configuration;
    return true;
}

std::map<KpARKernelParamFlag, float>
RvARBeautyTrack::getKpARGenderParamCoeffients(KpARGender gender) const
{
    const auto& all = nativeAs<NativeARBeautyTrack>().genderCoefficients;
    const auto coefficients = all.find(gender);
    return coefficients == all.end() ? std::map<KpARKernelParamFlag, float>()
                                     : coefficients->second;
}

void RvARBeautyTrack::setKpARGenderParamCoeffients(
    KpARGender gender, const std::map<KpARKernelParamFlag, float>& coefficients)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setKpARGenderParamCoeffients", beauty.id, gender, coefficients);
    for (const auto& [flag, value] : coefficients)
        beauty.genderCoefficients[gender][flag] = value;
}

std::map<std::int64_t, std::map<KpARKernelParamFlag, float>>
RvARBeautyTrack::getAllFaceBeautyParam() const
{
    return nativeAs<NativeARBeautyTrack>().faceParams;
}

void RvARBeautyTrack::setAllFaceBeautyParam(
    const std::map<std::int64_t, std::map<KpARKernelParamFlag, float>>& params)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setAllFaceBeautyParam", beauty.id, params);
    beauty.faceParams = params;
}

std::map<KpARKernelParamFlag, bool> RvARBeautyTrack::getAllBeautyAnattaForFaceControls() const
{
    return nativeAs<NativeARBeautyTrack>().faceControls;
}

void RvARBeautyTrack::setAllBeautyAnattaForFaceControls(
    const std::map<KpARKernelParamFlag, bool>& controls)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setAllBeautyAnattaForFaceControls", beauty.id, controls);
    beauty.faceControls = controls;
}

bool RvARBeautyTrack::getManualLongLegEnable() const
{
    return nativeAs<NativeARBeautyTrack>().longLegEnabled;
}

void RvARBeautyTrack::setManualLongLegEnable(bool enable)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setManualLongLegEnable", beauty.id, enable);
    beauty.longLegEnabled = enable;
}

std::pair<float, float> RvARBeautyTrack::getManualLongLegRange() const
{
    return nativeAs<NativeARBeautyTrack>().longLegRange;
}

void RvARBeautyTrack::setManualLongLegRange(const std::pair<float, float>& range)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setManualLongLegRange", beauty.id, range.first, range.second);
    beauty.longLegRange = range;
}

std::tuple<float, float, float> RvARBeautyTrack::getManualSlimHeadParam() const
{
    return nativeAs<NativeARBeautyTrack>().slimHead;
}

void RvARBeautyTrack::setManualSlimHeadParam(const std::tuple<float, float, float>& param)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setManualSlimHeadParam", beauty.id, std::get<0>(param),
           std::get<1>(param), std::get<2>(param));
    beauty.slimHead = param;
}

std::vector<QPointF> RvARBeautyTrack::getMapPointsData() const
{
    return nativeAs<NativeARBeautyTrack>().mapPoints;
}

void RvARBeautyTrack::setMapPointsData(const std::vector<QPointF>& points)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setMapPointsData", beauty.id, points);
    beauty.mapPoints = points;
}

std::int64_t RvARBeautyTrack::getBeautyMaskFaceId() const
{
    return nativeAs<NativeARBeautyTrack>().maskFaceId;
}

void RvARBeautyTrack::setBeautyMaskFaceId(std::int64_t faceId)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setBeautyMaskFaceId", beauty.id, faceId);
    beauty.maskFaceId = faceId;
}

std::string RvARBeautyTrack::getBeautyMaskBrushType() const
{
    return nativeAs<NativeARBeautyTrack>().maskBrushType;
}

void RvARBeautyTrack::setBeautyMaskBrushType(const std::string& brushType)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setBeautyMaskBrushType", beauty.id, brushType);
    beauty.maskBrushType = brushType;
}

QImage RvARBeautyTrack::getBeautyActiveMaskImage() const
{
    return nativeAs<NativeARBeautyTrack>().mask;
}

void RvARBeautyTrack::setBeautyActiveMaskImage(const QImage& mask)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::setBeautyActiveMaskImage", beauty.id, mask);
    beauty.mask = mask;
}

bool RvARBeautyTrack::loadBeautyMaskDatas(std::int64_t faceId, const QImage* /*data*/,
                                          const std::string& brushType, const QImage& mask)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    record("RvARBeautyTrack::loadBeautyMaskDatas", beauty.id, faceId, brushType, mask);
    if (qrvkp::shouldFail("RvARBeautyTrack::loadBeautyMaskDatas"))
        return false;
    beauty.maskFaceId = faceId;
    beauty.maskBrushType = brushType;
    beauty.mask = mask;
    return true;
}

} // namespace qkpar
