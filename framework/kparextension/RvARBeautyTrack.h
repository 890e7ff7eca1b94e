// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARFilterTrack.h>

#include <QImage>
#include <QPointF>

#include <tuple>
#include <utility>
#include <vector>

namespace qkpar {

/// A beauty effect (type 20005): a filter that reshapes and retouches faces and bodies.
class KPAREXTENSION_EXPORT RvARBeautyTrack : public RvARFilterTrack
{
public:
    /// Another wrapper of a native beauty track, with one reference; null for any other handle.
    static RvARBeautyTrack* create(void* context);
    /// A new track of the AR resource `source` (UTF-8, may be empty or missing), with one
    /// reference.
    static RvARBeautyTrack* create(const std::string& source, long long startPos,
                                   long long duration);

    RvBeautyType getBeautyType() const;
    void setBeautyType(RvBeautyType type);

    /// Whether men and women are treated with coefficients of their own.
    bool getEnableBeautyGenderDistinction() const;
    void setEnableBeautyGenderDistinction(bool enable);
    /// Whether the distinction holds for the AR resources too.
    bool getApplyGenderToAR() const;
    void setApplyGenderToAR(bool apply);

    /// The coefficient configuration loaded last.
    std::string getCoeffientParameterConfig() const;
    /// Loads a coefficient configuration text (UTF-8). False when it could not be loaded; the
    /// former one then stays.
    bool loadCoeffientParameterConfig(const std::string& configuration);

    /// The coefficients of one gender.
    std::map<KpARKernelParamFlag, float> getKpARGenderParamCoeffients(KpARGender gender) const;
    /// Sets the given coefficients of one gender; its others stay.
    void setKpARGenderParamCoeffients(KpARGender gender,
                                      const std::map<KpARKernelParamFlag, float>& coefficients);

    /// The beauty parameters of single faces, by face id.
    std::map<std::int64_t, std::map<KpARKernelParamFlag, float>> getAllFaceBeautyParam() const;
    /// Replaces the beauty parameters of all faces.
    void setAllFaceBeautyParam(
        const std::map<std::int64_t, std::map<KpARKernelParamFlag, float>>& params);

    /// Which parameters act on faces.
    std::map<KpARKernelParamFlag, bool> getAllBeautyAnattaForFaceControls() const;
    /// Replaces all of them.
    void setAllBeautyAnattaForFaceControls(const std::map<KpARKernelParamFlag, bool>& controls);

    bool getManualLongLegEnable() const;
    void setManualLongLegEnable(bool enable);
    /// Top and bottom of the stretched band, fractions of the height.
    std::pair<float, float> getManualLongLegRange() const;
    void setManualLongLegRange(const std::pair<float, float>& range);
    /// Centre x, centre y and strength, fractions of the picture.
    std::tuple<float, float, float> getManualSlimHeadParam() const;
    void setManualSlimHeadParam(const std::tuple<float, float, float>& param);
    /// The points of a reshaping grid, px.
    std::vector<QPointF> getMapPointsData() const;
    void setMapPointsData(const std::vector<QPointF>& points);

    /// The face that the manual mask belongs to; below 1 there is no mask.
    std::int64_t getBeautyMaskFaceId() const;
    void setBeautyMaskFaceId(std::int64_t faceId);
    /// The brush that the mask was painted with.
    std::string getBeautyMaskBrushType() const;
    void setBeautyMaskBrushType(const std::string& brushType);
    /// The mask; a null image while none was painted.
    QImage getBeautyActiveMaskImage() const;
    void setBeautyActiveMaskImage(const QImage& mask);
    /// Hands a whole mask over. `data` names the host's image that the mask stands for and is never
    /// read: the host may have deleted it. False when the mask could not be taken; the former one
    /// then stays.
    bool loadBeautyMaskDatas(std::int64_t faceId, const QImage* data, const std::string& brushType,
                             const QImage& mask);

protected:
    using RvARFilterTrack::RvARFilterTrack;
    ~RvARBeautyTrack() override;

private:
    static qrvkp::RvITrack* wrap(std::shared_ptr<qrvkp::NativeTrack> native);
};

} // namespace qkpar
