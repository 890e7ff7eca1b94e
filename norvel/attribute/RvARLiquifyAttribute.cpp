// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvARLiquifyAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

RvARLiquifyAttribute::RvARLiquifyAttribute()
{
    beautyType = qkpar::RvBeautyTypeLiquify;
}

RvARLiquifyAttribute::~RvARLiquifyAttribute() = default;

RvReturnVlaue RvARLiquifyAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvARLiquifyAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvARLiquifyAttribute::hasSameValues(const RvARLiquifyAttribute& /*other*/) const
{
    // A stroke goes by the identity of its move points, and no two records share theirs.
    return false;
}

void RvARLiquifyAttribute::fillJson(QJsonObject& json) const
{
    RvARBeautyAttribute::fillJson(json);
    QJsonObject option;
    option.insert(QStringLiteral("centerX"), centerX);
    option.insert(QStringLiteral("centerY"), centerY);
    option.insert(QStringLiteral("radius"), static_cast<double>(radius));
    option.insert(QStringLiteral("strength"), static_cast<double>(strength));
    option.insert(QStringLiteral("move_pointsX0"), movePoints[0].x());
    option.insert(QStringLiteral("move_pointsY0"), movePoints[0].y());
    option.insert(QStringLiteral("move_pointsX1"), movePoints[1].x());
    option.insert(QStringLiteral("move_pointsY1"), movePoints[1].y());
    option.insert(QStringLiteral("liquifyStyle"), liquifyStyle);
    json.insert(QStringLiteral("option"), option);
    json.insert(QStringLiteral("effectPath"), effectPath);
}

} // namespace norvel
