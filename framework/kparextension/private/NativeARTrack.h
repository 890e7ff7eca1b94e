// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/KpARTypes.h>
#include <kparextension/RvARFaceGroupData.h>
#include <kparextension/RvARLiquifyOperation.h>
#include <kparextension/RvARMakeupARGroupData.h>
#include <rvkpcore/private/NativeTrack.h>

#include <QImage>
#include <QPointF>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace qkpar {

struct NativeARTrack : qrvkp::NativeEffectTrack
{
    using NativeEffectTrack::NativeEffectTrack;

    std::map<std::string, std::string> scriptParams;
    std::string globalParamConfiguration;
};

struct NativeARFilterTrack : NativeARTrack
{
    using NativeARTrack::NativeARTrack;

    float filterAlpha = 1.0F;
    std::map<KpARKernelParamFlag, float> floatParams;
    std::map<std::int64_t, std::map<KpARKernelParamFlag, float>> faceFloatParams;
    std::map<std::int64_t, std::string> facePlists;

protected:
    /// Only a plain filter draws: the source of its kinds is no colour table.
    bool describe(rvengine::Layer& layer) const override;
};

struct NativeARBeautyTrack : NativeARFilterTrack
{
    using NativeARFilterTrack::NativeARFilterTrack;

    RvBeautyType beautyType = RvBeautyTypeBeauty;
    bool genderDistinction = false;
    bool applyGenderToAR = false;
    std::string coefficientConfig;
    std::map<KpARGender, std::map<KpARKernelParamFlag, float>> genderCoefficients;
    std::map<std::int64_t, std::map<KpARKernelParamFlag, float>> faceParams;
    std::map<KpARKernelParamFlag, bool> faceControls;
    bool longLegEnabled = false;
    std::pair<float, float> longLegRange{0.0F, 0.0F};
    std::tuple<float, float, float> slimHead{0.0F, 0.0F, 0.0F};
    std::vector<QPointF> mapPoints;
    std::int64_t maskFaceId = 0;
    std::string maskBrushType;
    QImage mask;
};

struct NativeARMakeupTrack : NativeARBeautyTrack
{
    NativeARMakeupTrack(int trackType, Wrap wrapper)
        : NativeARBeautyTrack(trackType, wrapper)
    {
        beautyType = RvBeautyTypeMakeup;
    }

    float suitAlpha = 1.0F;
    std::vector<std::string> groupOrder;
    std::vector<RvARMakeupARGroupData> groups;
    std::vector<RvARFaceGroupData> faceGroups;
};

struct NativeARLiquifyTrack : NativeARBeautyTrack
{
    NativeARLiquifyTrack(int trackType, Wrap wrapper)
        : NativeARBeautyTrack(trackType, wrapper)
    {
        beautyType = RvBeautyTypeLiquify;
    }

    std::vector<RvARLiquifyOperation> confirmed; ///< in the order of the strokes
    RvARLiquifyOperation last;                   ///< the stroke appended last, confirmed or not
    bool pending = false;                        ///< `last` is not confirmed yet

    void append(const RvARLiquifyOperation& stroke);
    void confirm();
    /// Replaces all strokes by those that were loaded.
    void replace(std::vector<RvARLiquifyOperation> strokes, const RvARLiquifyOperation& newLast);
    /// Strokes were to be loaded, and could not be.
    void noteFailedLoad();

protected:
    bool describe(rvengine::Layer& layer) const override;

private:
    bool isKnown(const RvARLiquifyOperation& stroke) const;

    /// The last stroke before the pending one, when the track already had the pending one.
    std::optional<RvARLiquifyOperation> m_lastBeforeRepeat;
    bool m_loadFailed = false; ///< and nothing was done to the strokes since
};

/// Gives a new native of an AR track the values of its creation; null stays null.
template <class Native>
std::shared_ptr<Native> withPlace(std::shared_ptr<Native> native, const std::string& source,
                                  long long startPos, long long duration)
{
    if (native) {
        native->source = source;
        native->startPos = startPos;
        native->duration = duration;
    }
    return native;
}

} // namespace qkpar
