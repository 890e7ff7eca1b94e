// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvMediaAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

RvMediaAttribute::RvMediaAttribute() = default;

RvMediaAttribute::~RvMediaAttribute() = default;

RvReturnVlaue RvMediaAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvMediaAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvMediaAttribute::hasSameValues(const RvMediaAttribute& other) const
{
    return RvAttribute::hasSameValues(other) && fileStartTime == other.fileStartTime &&
           width == other.width && height == other.height && positionX == other.positionX &&
           positionY == other.positionY && scale == other.scale && rotation == other.rotation;
}

void RvMediaAttribute::fillJson(QJsonObject& json) const
{
    RvAttribute::fillJson(json);
    json.insert(QStringLiteral("fileStartTime"), jsonFileTime(fileStartTime));
    json.insert(QStringLiteral("width"), static_cast<double>(width));
    json.insert(QStringLiteral("height"), static_cast<double>(height));
    json.insert(QStringLiteral("positionX"), static_cast<double>(positionX));
    json.insert(QStringLiteral("positionY"), static_cast<double>(positionY));
    json.insert(QStringLiteral("scale"), static_cast<double>(scale));
    json.insert(QStringLiteral("rotation"), static_cast<double>(rotation));
}

} // namespace norvel
