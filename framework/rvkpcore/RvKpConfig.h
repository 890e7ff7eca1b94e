// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

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
    /// Sets the canvas size in px; new media tracks are centred on it.
    void setKpSize(float width, float height);

private:
    float m_width = 1920.0F;
    float m_height = 1080.0F;
};

} // namespace qrvkp
