// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvAudioAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

RvAudioAttribute::RvAudioAttribute() = default;

RvAudioAttribute::~RvAudioAttribute() = default;

RvReturnVlaue RvAudioAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvAudioAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvAudioAttribute::hasSameValues(const RvAudioAttribute& other) const
{
    return RvAttribute::hasSameValues(other) && fileStartTime == other.fileStartTime;
}

void RvAudioAttribute::fillJson(QJsonObject& json) const
{
    RvAttribute::fillJson(json);
    json.insert(QStringLiteral("fileStartTime"), jsonFileTime(fileStartTime));
}

} // namespace norvel
