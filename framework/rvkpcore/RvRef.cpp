// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvRef.h>

namespace qrvkp {

namespace {
std::atomic<long long> liveObjects{0};
} // namespace

RvRef::RvRef() noexcept
{
    liveObjects.fetch_add(1, std::memory_order_relaxed);
}

RvRef::~RvRef()
{
    liveObjects.fetch_sub(1, std::memory_order_relaxed);
}

void RvRef::retain() noexcept
{
    m_references.fetch_add(1, std::memory_order_relaxed);
}

void RvRef::release() noexcept
{
    if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete this;
}

int RvRef::referenceCount() const noexcept
{
    return m_references.load(std::memory_order_relaxed);
}

long long RvRef::liveCount() noexcept
{
    return liveObjects.load(std::memory_order_relaxed);
}

} // namespace qrvkp
