// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <memory>

namespace rvengine {

/// Ends work in other threads that may take long. Copies share their state; any thread may call any
/// function.
class Interrupt
{
public:
    void raise() { *m_raised = true; }
    bool isRaised() const { return *m_raised; }

private:
    std::shared_ptr<std::atomic<bool>> m_raised = std::make_shared<std::atomic<bool>>(false);
};

} // namespace rvengine
