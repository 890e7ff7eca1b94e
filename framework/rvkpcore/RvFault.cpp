// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvFault.h>

#include <rvkpcore/private/FaultPoint.h>

#include <atomic>
#include <map>
#include <mutex>

namespace qrvkp {

namespace {

struct Faults
{
    std::mutex mutex;
    std::map<std::string, int, std::less<>> callsLeft;
    std::atomic<bool> any{false};
};

Faults& faults()
{
    static Faults instance;
    return instance;
}

} // namespace

void RvFault::failNext(const std::string& name, int nth)
{
    if (nth < 1)
        return;
    const std::lock_guard lock(faults().mutex);
    faults().callsLeft[name] = nth;
    faults().any = true;
}

bool RvFault::isPending(const std::string& name)
{
    const std::lock_guard lock(faults().mutex);
    return faults().callsLeft.count(name) != 0;
}

void RvFault::clear()
{
    const std::lock_guard lock(faults().mutex);
    faults().callsLeft.clear();
    faults().any = false;
}

bool shouldFail(const char* name)
{
    if (!faults().any.load(std::memory_order_relaxed))
        return false;
    const std::lock_guard lock(faults().mutex);
    const auto request = faults().callsLeft.find(std::string_view(name));
    if (request == faults().callsLeft.end() || --request->second > 0)
        return false;
    faults().callsLeft.erase(request);
    faults().any = !faults().callsLeft.empty();
    return true;
}

} // namespace qrvkp
