// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvARAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

RvARAttribute::RvARAttribute() = default;

RvARAttribute::~RvARAttribute() = default;

RvReturnVlaue RvARAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvARAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvARAttribute::hasSameValues(const RvARAttribute& other) const
{
    return RvEffectAttribute::hasSameValues(other) && scriptParams == other.scriptParams &&
           globalParamConfiguration == other.globalParamConfiguration;
}

void RvARAttribute::fillJson(QJsonObject& json) const
{
    RvEffectAttribute::fillJson(json);
    QJsonObject params;
    for (const auto& [name, value] : scriptParams)
        params.insert(jsonText(name), jsonText(value));
    json.insert(QStringLiteral("globalParamConfiguration"), jsonText(globalParamConfiguration));
    json.insert(QStringLiteral("scriptParams"), params);
}

} // namespace norvel
