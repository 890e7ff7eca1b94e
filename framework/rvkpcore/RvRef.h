// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

#include <atomic>

namespace qrvkp {

/// Base of the reference-counted objects of the framework.
///
/// An object starts with one reference, which belongs to whoever created it. An object obtained
/// from a `create`, a lookup, a list or a getter that says so carries one reference that the
/// receiver releases. Counting is thread-safe; what the objects hold is not, unless their class
/// says so.
class RVKPCORE_EXPORT RvRef
{
public:
    RvRef(const RvRef&) = delete;
    RvRef& operator=(const RvRef&) = delete;

    /// Adds a reference.
    void retain() noexcept;
    /// Drops a reference; the last one destroys the object.
    void release() noexcept;
    /// The number of references, for diagnostics: another thread may change it at any time.
    int referenceCount() const noexcept;

    /// The number of living objects of the process, so that a test can say that nothing leaked.
    static long long liveCount() noexcept;

protected:
    RvRef() noexcept;
    virtual ~RvRef();

private:
    std::atomic<int> m_references{1};
};

} // namespace qrvkp
