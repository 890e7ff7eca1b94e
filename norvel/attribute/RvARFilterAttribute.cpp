// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvARFilterAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

namespace {

QJsonObject jsonParams(const std::map<qkpar::KpARKernelParamFlag, float>& params)
{
    QJsonObject json;
    for (const auto& [flag, value] : params)
        json.insert(QString::number(static_cast<int>(flag)), static_cast<double>(value));
    return json;
}

} // namespace

RvARFilterAttribute::RvARFilterAttribute() = default;

RvARFilterAttribute::~RvARFilterAttribute() = default;

RvReturnVlaue RvARFilterAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvARFilterAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvARFilterAttribute::hasSameValues(const RvARFilterAttribute& other) const
{
    return RvARAttribute::hasSameValues(other) && filterAlpha == other.filterAlpha &&
           floatParams == other.floatParams && faceFloatParams == other.faceFloatParams;
}

void RvARFilterAttribute::fillJson(QJsonObject& json) const
{
    RvARAttribute::fillJson(json);
    QJsonObject faces;
    for (const auto& [faceId, params] : faceFloatParams)
        faces.insert(jsonDecimal(faceId), jsonParams(params));
    json.insert(QStringLiteral("filterAlpha"), static_cast<double>(filterAlpha));
    json.insert(QStringLiteral("floatParams"), jsonParams(floatParams));
    json.insert(QStringLiteral("faceFloatParams"), faces);
}

} // namespace norvel
