// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARBeautyTrack.h>

#include <kparextension/private/ARCallText.h>
#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qkpar {

using qrvkp::calls::change;

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
    change("RvARBeautyTrack::setBeautyType", beauty, type);
    beauty.beautyType = type;
}

bool RvARBeautyTrack::getEnableBeautyGenderDistinction() const
{
    return nativeAs<NativeARBeautyTrack>().genderDistinction;
}

void RvARBeautyTrack::setEnableBeautyGenderDistinction(bool enable)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::setEnableBeautyGenderDistinction", beauty, enable);
    beauty.genderDistinction = enable;
}

bool RvARBeautyTrack::getApplyGenderToAR() const
{
    return nativeAs<NativeARBeautyTrack>().applyGenderToAR;
}

void RvARBeautyTrack::setApplyGenderToAR(bool apply)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::setApplyGenderToAR", beauty, apply);
    beauty.applyGenderToAR = apply;
}

std::string RvARBeautyTrack::getCoeffientParameterConfig() const
{
    return nativeAs<NativeARBeautyTrack>().coefficientConfig;
}

bool RvARBeautyTrack::loadCoeffientParameterConfig(const std::string& configuration)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::loadCoeffientParameterConfig", beauty, configuration);
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
    change("RvARBeautyTrack::setKpARGenderParamCoeffients", beauty, gender, coefficients);
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
    change("RvARBeautyTrack::setAllFaceBeautyParam", beauty, params);
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
    change("RvARBeautyTrack::setAllBeautyAnattaForFaceControls", beauty, controls);
    beauty.faceControls = controls;
}

bool RvARBeautyTrack::getManualLongLegEnable() const
{
    return nativeAs<NativeARBeautyTrack>().longLegEnabled;
}

void RvARBeautyTrack::setManualLongLegEnable(bool enable)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::setManualLongLegEnable", beauty, enable);
    beauty.longLegEnabled = enable;
}

std::pair<float, float> RvARBeautyTrack::getManualLongLegRange() const
{
    return nativeAs<NativeARBeautyTrack>().longLegRange;
}

void RvARBeautyTrack::setManualLongLegRange(const std::pair<float, float>& range)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::setManualLongLegRange", beauty, range.first, range.second);
    beauty.longLegRange = range;
}

std::tuple<float, float, float> RvARBeautyTrack::getManualSlimHeadParam() const
{
    return nativeAs<NativeARBeautyTrack>().slimHead;
}

void RvARBeautyTrack::setManualSlimHeadParam(const std::tuple<float, float, float>& param)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::setManualSlimHeadParam", beauty, std::get<0>(param),
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
    change("RvARBeautyTrack::setMapPointsData", beauty, points);
    beauty.mapPoints = points;
}

std::int64_t RvARBeautyTrack::getBeautyMaskFaceId() const
{
    return nativeAs<NativeARBeautyTrack>().maskFaceId;
}

void RvARBeautyTrack::setBeautyMaskFaceId(std::int64_t faceId)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::setBeautyMaskFaceId", beauty, faceId);
    beauty.maskFaceId = faceId;
}

std::string RvARBeautyTrack::getBeautyMaskBrushType() const
{
    return nativeAs<NativeARBeautyTrack>().maskBrushType;
}

void RvARBeautyTrack::setBeautyMaskBrushType(const std::string& brushType)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::setBeautyMaskBrushType", beauty, brushType);
    beauty.maskBrushType = brushType;
}

QImage RvARBeautyTrack::getBeautyActiveMaskImage() const
{
    return nativeAs<NativeARBeautyTrack>().mask;
}

void RvARBeautyTrack::setBeautyActiveMaskImage(const QImage& mask)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::setBeautyActiveMaskImage", beauty, mask);
    beauty.mask = mask;
}

bool RvARBeautyTrack::loadBeautyMaskDatas(std::int64_t faceId, const QImage* /*data*/,
                                          const std::string& brushType, const QImage& mask)
{
    auto& beauty = nativeAs<NativeARBeautyTrack>();
    change("RvARBeautyTrack::loadBeautyMaskDatas", beauty, faceId, brushType, mask);
    if (qrvkp::shouldFail("RvARBeautyTrack::loadBeautyMaskDatas"))
        return false;
    beauty.maskFaceId = faceId;
    beauty.maskBrushType = brushType;
    beauty.mask = mask;
    return true;
}

} // namespace qkpar
