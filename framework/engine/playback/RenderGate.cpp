// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RenderGate.h"

namespace rvengine {

void RenderGate::close()
{
    std::unique_lock lock(m_mutex);
    const auto self = std::this_thread::get_id();
    if (m_depth == 0 || m_holder != self) {
        ++m_waiting;
        m_changed.wait(lock, [this] { return m_depth == 0 && !m_rendering; });
        --m_waiting;
        m_holder = self;
    }
    ++m_depth;
}

bool RenderGate::open()
{
    const std::lock_guard lock(m_mutex);
    if (m_depth == 0 || m_holder != std::this_thread::get_id() || --m_depth > 0)
        return false;
    m_changed.notify_all();
    return true;
}

bool RenderGate::tryClose()
{
    const std::lock_guard lock(m_mutex);
    if (m_depth > 0)
        return false;
    m_holder = std::this_thread::get_id();
    m_depth = 1;
    return true;
}

bool RenderGate::isClosed() const
{
    const std::lock_guard lock(m_mutex);
    return m_depth > 0;
}

bool RenderGate::tryEnter()
{
    const std::lock_guard lock(m_mutex);
    m_rendering = m_depth == 0 && m_waiting == 0;
    return m_rendering;
}

void RenderGate::leave()
{
    const std::lock_guard lock(m_mutex);
    m_rendering = false;
    m_changed.notify_all();
}

} // namespace rvengine
