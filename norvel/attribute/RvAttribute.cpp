// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordIdentity.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

RvAttribute::RvAttribute()
    : uuid(newRecordIdentity())
{
}

RvAttribute::~RvAttribute() = default;

RvReturnVlaue RvAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvAttribute::hasSameValues(const RvAttribute& other) const
{
    return uuid == other.uuid && source == other.source && startTime == other.startTime &&
           duration == other.duration && type == other.type && zOrder == other.zOrder &&
           alpha == other.alpha && speed == other.speed;
}

void RvAttribute::fillJson(QJsonObject& json) const
{
    json.insert(QStringLiteral("uuid"), jsonDecimal(uuid));
    json.insert(QStringLiteral("source"), jsonText(source));
    json.insert(QStringLiteral("startTime"), jsonDecimal(startTime));
    json.insert(QStringLiteral("duration"), jsonDecimal(duration));
    json.insert(QStringLiteral("type"), type);
    json.insert(QStringLiteral("zOrder"), zOrder);
    json.insert(QStringLiteral("alpha"), static_cast<double>(alpha));
    json.insert(QStringLiteral("speed"), static_cast<double>(speed));
}

} // namespace norvel
