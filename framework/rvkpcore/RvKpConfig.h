// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

#include <functional>

namespace qrvkp {

/// The configuration of an application: the size of its canvas. Belongs to its `RvKpApplication`.
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
    /// Sets the canvas size in px; new media tracks are centred on it, and the view shows it.
    void setKpSize(float width, float height);

private:
    friend class RvKpApplication;

    float m_width = 1920.0F;
    float m_height = 1080.0F;
    std::function<void()> m_sizeChanged; ///< told to the application
};

} // namespace qrvkp
