// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvMatteAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

RvMatteAttribute::RvMatteAttribute() = default;

RvMatteAttribute::~RvMatteAttribute() = default;

RvReturnVlaue RvMatteAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvMatteAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvMatteAttribute::hasSameValues(const RvMatteAttribute& other) const
{
    return RvEffectAttribute::hasSameValues(other);
}

void RvMatteAttribute::fillJson(QJsonObject& json) const
{
    RvEffectAttribute::fillJson(json);
    // A matte keeps its detection to itself.
    json.remove(QStringLiteral("detect"));
}

} // namespace norvel
