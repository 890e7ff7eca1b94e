// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/private/CurrentCanvas.h>

#include <atomic>

namespace qrvkp {

/// The canvas of one application, known to `currentCanvasSize` as long as it lives. Thread-safe.
class ApplicationCanvas
{
public:
    ApplicationCanvas();
    ~ApplicationCanvas();
    ApplicationCanvas(const ApplicationCanvas&) = delete;
    ApplicationCanvas& operator=(const ApplicationCanvas&) = delete;

    CanvasSize size() const { return m_size; }
    void setSize(CanvasSize size) { m_size = size; }

private:
    std::atomic<CanvasSize> m_size{CanvasSize()};
};

} // namespace qrvkp
