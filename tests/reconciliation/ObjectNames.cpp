// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ObjectNames.h"

#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvEffectAttribute.h>

#include <algorithm>
#include <array>
#include <cctype>

namespace {

/// Far above every id of the tests and of the framework.
constexpr std::uint64_t firstName = std::uint64_t{1} << 63U;

bool isNumber(const std::string& text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char character) {
        return std::isdigit(character) != 0;
    });
}

/// Whether the second argument of a call is an object too.
bool takesAnObject(const std::string& operation)
{
    static const std::array<const char*, 4> operations{
        "RvKpGroup::addTrack", "RvIEffectTrack::bind", "RvDetectionTrack::bind",
        "RvIEffectTrack::bindDetect"};
    return std::find(operations.begin(), operations.end(), operation) != operations.end();
}

} // namespace

void ObjectNames::see(std::uint64_t id)
{
    m_numbers.try_emplace(id, m_numbers.size());
}

std::uint64_t ObjectNames::idOf(std::uint64_t id) const
{
    const auto number = m_numbers.find(id);
    return number == m_numbers.end() ? id : firstName + number->second;
}

std::string ObjectNames::nameOf(const std::string& id) const
{
    if (!isNumber(id))
        return id;
    const auto number = m_numbers.find(std::stoull(id));
    return number == m_numbers.end() ? id : "#" + std::to_string(number->second);
}

std::vector<std::string> ObjectNames::rename(const std::vector<std::string>& calls)
{
    std::vector<std::string> renamed;
    renamed.reserve(calls.size());
    for (const std::string& call : calls)
        renamed.push_back(renameCall(call));
    return renamed;
}

std::string ObjectNames::renameCall(const std::string& call)
{
    const std::string arrow = " -> ";
    const std::size_t creation = call.rfind(arrow);
    if (creation != std::string::npos) {
        const std::size_t start = creation + arrow.size();
        const std::string id = call.substr(start);
        if (isNumber(id))
            see(std::stoull(id));
        return call.substr(0, start) + nameOf(id);
    }
    std::size_t start = call.find('(') + 1;
    std::string renamed = call.substr(0, start);
    const int objects = takesAnObject(call.substr(0, start - 1)) ? 2 : 1;
    for (int i = 0; i < objects; ++i) {
        const std::size_t end = call.find_first_of(",)", start);
        renamed += nameOf(call.substr(start, end - start));
        start = end;
        if (i + 1 < objects) {
            renamed += ", ";
            start += 2;
        }
    }
    return renamed + call.substr(start);
}

void ObjectNames::rename(norvel::RvTimeLineAttribute& description) const
{
    const auto renameRecord = [this](norvel::RvAttribute* record) {
        record->uuid = idOf(record->uuid);
        const auto renameTargets = [this](std::vector<std::uint64_t>& targets) {
            for (std::uint64_t& target : targets)
                target = idOf(target);
        };
        if (auto* detection = dynamic_cast<norvel::RvDetectAttribute*>(record))
            renameTargets(detection->target);
        if (auto* effect = dynamic_cast<norvel::RvEffectAttribute*>(record)) {
            renameTargets(effect->target);
            effect->detect = idOf(effect->detect);
        }
    };
    std::for_each(description.mainAttribs.begin(), description.mainAttribs.end(), renameRecord);
    std::for_each(description.mixAttribs.begin(), description.mixAttribs.end(), renameRecord);
}
