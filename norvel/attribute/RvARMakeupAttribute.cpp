// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvARMakeupAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace norvel {

namespace {

using Group = qkpar::RvARMakeupARGroupData;
using Face = qkpar::RvARFaceGroupData;

bool sameGroup(const Group& a, const Group& b)
{
    return a.groupAlpha == b.groupAlpha && a.groupDataId == b.groupDataId &&
           a.groupName == b.groupName && a.entries == b.entries;
}

bool sameGroups(const std::vector<Group>& a, const std::vector<Group>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameGroup);
}

std::uint32_t bitsOf(float value)
{
    std::uint32_t bits = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// Faces that do not belong together, or whose groups cannot be paired, say nothing about a change.
bool sameGroupsIfSameFace(const Face& a, const Face& b)
{
    const bool comparable = a.faceId == b.faceId && bitsOf(a.suitAlpha) == bitsOf(b.suitAlpha) &&
                            a.groupDatas.size() == b.groupDatas.size();
    return !comparable || sameGroups(a.groupDatas, b.groupDatas);
}

} // namespace

RvARMakeupAttribute::RvARMakeupAttribute()
{
    beautyType = qkpar::RvBeautyTypeMakeup;
}

RvARMakeupAttribute::~RvARMakeupAttribute() = default;

RvReturnVlaue RvARMakeupAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvARMakeupAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvARMakeupAttribute::hasSameValues(const RvARMakeupAttribute& other) const
{
    return RvARBeautyAttribute::hasSameValues(other) && suitAlpha == other.suitAlpha &&
           groupFaceDatas.size() == other.groupFaceDatas.size() &&
           sameGroups(groupDatas, other.groupDatas) &&
           std::equal(groupFaceDatas.begin(), groupFaceDatas.end(), other.groupFaceDatas.begin(),
                      sameGroupsIfSameFace);
}

void RvARMakeupAttribute::fillJson(QJsonObject& json) const
{
    RvARBeautyAttribute::fillJson(json);
    QJsonArray groups;
    for (const qkpar::RvARMakeupARGroupData& data : groupDatas) {
        QJsonObject group;
        group.insert(QStringLiteral("groupAlpha"), static_cast<double>(data.groupAlpha));
        group.insert(QStringLiteral("groupDataId"), jsonNumber(data.groupDataId));
        group.insert(QStringLiteral("groupName"), jsonText(data.groupName));
        groups.append(group);
    }
    QJsonArray faces;
    for (const qkpar::RvARFaceGroupData& data : groupFaceDatas) {
        QJsonObject face;
        face.insert(QStringLiteral("faceId"), jsonNumber(data.faceId));
        face.insert(QStringLiteral("suitAlpha"), static_cast<double>(data.suitAlpha));
        faces.append(face);
    }
    json.insert(QStringLiteral("suitAlpha"), static_cast<double>(suitAlpha));
    json.insert(QStringLiteral("groupDatas"), groups);
    json.insert(QStringLiteral("groupFaceDatas"), faces);
    json.insert(QStringLiteral("groupOrders"), jsonTexts(groupOrders));
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): callers hand over groups by value.
bool RvARMakeupAttribute::compareMakeupGroupData(Group a, Group b)
{
    return sameGroup(a, b);
}

} // namespace norvel
