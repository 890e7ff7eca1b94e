// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

#include <functional>
#include <memory>

namespace qrvkp {

class ApplicationCanvas;

/// The configuration of an application: the size of its canvas. Belongs to its `RvKpApplication`;
/// that of another application is not touched.
class RVKPCORE_EXPORT RvKpConfig
{
public:
    /// 1920 x 1080.
    RvKpConfig();
    ~RvKpConfig();
    RvKpConfig(const RvKpConfig&) = delete;
    RvKpConfig& operator=(const RvKpConfig&) = delete;

    float getKpSizeWidth() const;  ///< canvas px
    float getKpSizeHeight() const; ///< canvas px
    /// Sets the canvas size in px, which the application's view shows and its player plays. New
    /// media tracks and mattes are centred on the canvas of the oldest application of the process.
    void setKpSize(float width, float height);

private:
    friend class RvKpApplication;

    const std::unique_ptr<ApplicationCanvas> m_canvas;
    std::function<void()> m_sizeChanged; ///< told to the application
};

} // namespace qrvkp
