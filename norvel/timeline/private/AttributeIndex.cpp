// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/private/AttributeIndex.h>

#include <norvel/timeline/private/RecordPrefetch.h>

#include <typeinfo>

namespace norvel {

AttributeIndex::AttributeIndex(const std::vector<RvAttribute*>& list)
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
    const auto* entry = m_records.find(attribute->uuid);
    for (; entry && entry != m_records.end() && entry->id == attribute->uuid; ++entry) {
        if (typeid(*entry->value) == typeid(*attribute))
            return attribute->compare(entry->value);
    }
    return ReturnNotFound;
}

void AttributeIndex::keep(std::uint64_t uuid)
{
    if (const auto* entry = m_records.find(uuid)) {
        m_kept.resize(m_ids.size());
        m_kept[m_records.positionOf(entry)] = true;
    }
}

bool AttributeIndex::isKept(std::uint64_t uuid)
{
    if (m_kept.empty())
        return false;
    const auto* entry = m_records.find(uuid);
    return entry && m_kept[m_records.positionOf(entry)];
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
