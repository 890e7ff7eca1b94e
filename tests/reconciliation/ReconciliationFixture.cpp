// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ReconciliationFixture.h"

#include <rvkpcore/RvCallLog.h>

#include <algorithm>

void ReconciliationTest::setLive(const norvel::RvTimeLineAttribute& description)
{
    timeline = TimelineSamples::live(description);
}

ReconciliationTest::Calls ReconciliationTest::update(const norvel::RvTimeLineAttribute& from,
                                                     const norvel::RvTimeLineAttribute& to)
{
    ObjectNames names;
    for (const auto& group : norvel::adopt(timeline->getGroups()))
        names.see(group->getGroupID());
    qrvkp::RvCallLog::start();
    norvel::RvAttributeUtility::updateTimeLine(timeline.get(), &from, &to);
    qrvkp::RvCallLog::stop();
    return names.rename(qrvkp::RvCallLog::entries());
}

ReconciliationTest::Calls ReconciliationTest::structural(const Calls& calls)
{
    Calls result;
    std::copy_if(
        calls.begin(), calls.end(), std::back_inserter(result), [](const std::string& call) {
            return call.find(" -> ") != std::string::npos || call.rfind("RvKpTimeLine::", 0) == 0 ||
                   call.rfind("RvKpGroup::", 0) == 0;
        });
    return result;
}

std::string ReconciliationTest::move(std::size_t group, std::size_t position)
{
    return "RvKpTimeLine::changeGroupPosition(#" + std::to_string(group) + ", " +
           std::to_string(position) + ")";
}

void ReconciliationTest::erase(std::vector<norvel::RvAttribute*>& list, std::size_t index)
{
    const auto record = list.begin() + static_cast<std::ptrdiff_t>(index);
    delete *record;
    list.erase(record);
}

void ReconciliationTest::moveRecord(std::vector<norvel::RvAttribute*>& list, std::size_t from,
                                    std::size_t to)
{
    norvel::RvAttribute* record = list[from];
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(from));
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(to), record);
}
