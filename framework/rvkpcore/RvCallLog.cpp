// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvCallLog.h>

#include <rvkpcore/private/CallRecorder.h>

#include <QByteArray>

#include <array>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <mutex>

namespace qrvkp {

namespace {

struct Log
{
    std::mutex mutex;
    std::vector<std::string> entries;
    bool recording = false;
    const bool printing = qgetenv("RVKP_TRACE") == "1";
    std::atomic<bool> active{printing};
};

Log& log()
{
    static Log instance;
    return instance;
}

template <class Float>
std::string shortest(Float value)
{
    std::array<char, 40> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), result.ptr};
}

} // namespace

void RvCallLog::start()
{
    const std::lock_guard lock(log().mutex);
    log().entries.clear();
    log().recording = true;
    log().active = true;
}

void RvCallLog::stop()
{
    const std::lock_guard lock(log().mutex);
    log().recording = false;
    log().active = log().printing;
}

std::vector<std::string> RvCallLog::entries()
{
    const std::lock_guard lock(log().mutex);
    return log().entries;
}

std::size_t RvCallLog::count()
{
    const std::lock_guard lock(log().mutex);
    return log().entries.size();
}

namespace calls {

bool active() noexcept
{
    return log().active.load(std::memory_order_relaxed);
}

void add(std::string entry)
{
    const std::lock_guard lock(log().mutex);
    if (log().printing)
        std::fprintf(stderr, "%s\n", entry.c_str());
    if (log().recording)
        log().entries.push_back(std::move(entry));
}

std::string text(bool value)
{
    return value ? "true" : "false";
}
std::string text(long long value)
{
    return std::to_string(value);
}
std::string text(unsigned long long value)
{
    return std::to_string(value);
}
std::string text(float value)
{
    return shortest(value);
}
std::string text(double value)
{
    return shortest(value);
}
std::string text(const std::string& value)
{
    return '"' + value + '"';
}

} // namespace calls

} // namespace qrvkp
