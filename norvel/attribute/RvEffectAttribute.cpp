// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvEffectAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

RvEffectAttribute::RvEffectAttribute() = default;

RvEffectAttribute::~RvEffectAttribute() = default;

RvReturnVlaue RvEffectAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvEffectAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvEffectAttribute::hasSameValues(const RvEffectAttribute& other) const
{
    return RvAttribute::hasSameValues(other) && range == other.range &&
           bindType == other.bindType && target == other.target && detect == other.detect;
}

void RvEffectAttribute::fillJson(QJsonObject& json) const
{
    RvAttribute::fillJson(json);
    json.insert(QStringLiteral("range"), range);
    json.insert(QStringLiteral("bindType"), bindType);
    json.insert(QStringLiteral("target"), jsonDecimals(target));
    json.insert(QStringLiteral("detect"), jsonDecimal(detect));
}

} // namespace norvel
