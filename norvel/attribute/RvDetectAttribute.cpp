// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvDetectAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

RvDetectAttribute::RvDetectAttribute() = default;

RvDetectAttribute::~RvDetectAttribute() = default;

RvReturnVlaue RvDetectAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvDetectAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvDetectAttribute::hasSameValues(const RvDetectAttribute& other) const
{
    return RvAttribute::hasSameValues(other) && mode == other.mode && modePath == other.modePath &&
           range == other.range && bindType == other.bindType && target == other.target;
}

void RvDetectAttribute::fillJson(QJsonObject& json) const
{
    RvAttribute::fillJson(json);
    json.insert(QStringLiteral("range"), range);
    json.insert(QStringLiteral("bindType"), bindType);
    json.insert(QStringLiteral("target"), jsonDecimals(target));
    json.insert(QStringLiteral("mode"), mode);
    json.insert(QStringLiteral("modePath"), jsonText(modePath));
}

} // namespace norvel
