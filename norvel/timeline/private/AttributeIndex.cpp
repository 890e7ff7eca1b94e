// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/private/AttributeIndex.h>

#include <norvel/attribute/RvARFrameAttribute.h>
#include <norvel/attribute/RvARLabelAttribute.h>
#include <norvel/attribute/RvARLayerAttribute.h>
#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvMatteAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>
#include <norvel/timeline/private/RecordPrefetch.h>

#include <typeinfo>

namespace norvel {

namespace {

template <class... Kind>
bool isOneOf(const std::type_info& kind)
{
    return ((kind == typeid(Kind)) || ...);
}

} // namespace

AttributeIndex::AttributeIndex(const std::vector<RvAttribute*>& list)
    : m_list(list)
{
    m_records.reserve(list.size());
    m_ids.reserve(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        prefetchRecord(list, i, 1);
        RvAttribute* element = list[i];
        if (!element)
            continue;
        m_records.add(element->uuid, element);
        m_ids.push_back(element->uuid);
    }
}

RvReturnVlaue AttributeIndex::compare(const RvAttribute* attribute)
{
    if (!attribute)
        return ReturnInvalid;
    const std::type_info& kind = typeid(*attribute);
    if (!isLibraryKind(kind)) {
        const auto sameClass = hostRecords().find(kind);
        return sameClass == hostRecords().end() ? ReturnNotFound
                                                : compareWithList(attribute, sameClass->second);
    }
    const auto* entry = m_records.find(attribute->uuid);
    for (; entry && entry != m_records.end() && entry->id == attribute->uuid; ++entry) {
        if (typeid(*entry->value) == kind)
            return attribute->compare(entry->value);
    }
    return ReturnNotFound;
}

bool AttributeIndex::keep(std::uint64_t uuid)
{
    const auto* entry = m_records.find(uuid);
    if (!entry)
        return false;
    m_kept.resize(m_ids.size());
    m_kept[m_records.positionOf(entry)] = true;
    return true;
}

bool AttributeIndex::isKept(std::uint64_t uuid)
{
    if (m_kept.empty())
        return false;
    const auto* entry = m_records.find(uuid);
    return entry && m_kept[m_records.positionOf(entry)];
}

bool AttributeIndex::isLibraryKind(const std::type_info& kind)
{
    if (m_lastLibraryKind && kind == *m_lastLibraryKind)
        return true;
    if (!isOneOf<RvAttribute, RvMediaAttribute, RvAudioAttribute, RvDetectAttribute,
                 RvEffectAttribute, RvMatteAttribute, RvARAttribute, RvARLayerAttribute,
                 RvARFilterAttribute, RvARBeautyAttribute, RvARFrameAttribute, RvARLabelAttribute,
                 RvARLiquifyAttribute, RvARMakeupAttribute>(kind))
        return false;
    m_lastLibraryKind = &kind;
    return true;
}

const AttributeIndex::RecordsByClass& AttributeIndex::hostRecords()
{
    if (!m_hostRecords) {
        m_hostRecords.emplace();
        for (RvAttribute* element : m_list) {
            if (element && !isLibraryKind(typeid(*element)))
                (*m_hostRecords)[typeid(*element)].push_back(element);
        }
    }
    return *m_hostRecords;
}

RvReturnVlaue compareWithList(const RvAttribute* attribute, const std::vector<RvAttribute*>& list)
{
    if (!attribute)
        return ReturnInvalid;
    for (RvAttribute* element : list) {
        if (!element || typeid(*element) != typeid(*attribute))
            continue;
        const RvReturnVlaue result = attribute->compare(element);
        if (result == ReturnSame || result == ReturnChanged)
            return result;
    }
    return ReturnNotFound;
}

} // namespace norvel
