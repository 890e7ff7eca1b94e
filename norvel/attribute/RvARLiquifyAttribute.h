// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARBeautyAttribute.h>

#include <QPointF>
#include <QString>

#include <array>

namespace norvel {

/// An AR liquify track (`type` 13) with one pending stroke of the liquify tool.
///
/// The stroke is in pixels of the picture, origin at the top left, y down. Its fields stand in the
/// member "option" of the record's JSON.
struct NORVEL_EXPORT RvARLiquifyAttribute : RvARBeautyAttribute
{
    /// `beautyType` is qkpar::RvBeautyTypeLiquify from the start.
    RvARLiquifyAttribute();
    RvARLiquifyAttribute(const RvARLiquifyAttribute& other) = default;
    RvARLiquifyAttribute& operator=(const RvARLiquifyAttribute& other) = default;
    ~RvARLiquifyAttribute() override;

    /// Never ReturnSame: a liquify track is refreshed every time, because what its picture shows is
    /// in the saved strokes of `effectPath` and not in these values. With the same uuid the answer
    /// is ReturnChanged, for an exact copy and for the record itself too.
    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    /// Always false, see `compare`.
    bool hasSameValues(const RvARLiquifyAttribute& other) const;
    void fillJson(QJsonObject& json) const;

    double centerX = 0.0;              ///< centre of the stroke
    double centerY = 0.0;              ///< centre of the stroke
    float radius = 0.0F;               ///< px around the centre that the stroke moves; 0 until set
    float strength = 0.0F;             ///< 0 none to 1 full; 0 until set
    std::array<QPointF, 2> movePoints; ///< the stroke goes from point 0 to point 1
    std::int32_t liquifyStyle = 0;     ///< the tool: push, bloat, pinch, ...
    QString effectPath;                ///< folder that the strokes up to this record were saved to
};

} // namespace norvel
