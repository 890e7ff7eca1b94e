// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpConfig.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/CurrentCanvas.h>
#include <rvkpcore/private/SceneChanges.h>

#include <atomic>

namespace qrvkp {

namespace {

std::atomic<CanvasSize> canvasSize{CanvasSize()};

} // namespace

CanvasSize currentCanvasSize()
{
    return canvasSize.load();
}

void setCurrentCanvasSize(CanvasSize size)
{
    canvasSize = size;
}

RvKpConfig::RvKpConfig()
{
    setCurrentCanvasSize({m_width, m_height});
}

RvKpConfig::~RvKpConfig()
{
    setCurrentCanvasSize({});
}

float RvKpConfig::getKpSizeWidth() const
{
    return m_width;
}

float RvKpConfig::getKpSizeHeight() const
{
    return m_height;
}

void RvKpConfig::setKpSize(float width, float height)
{
    calls::record("RvKpConfig::setKpSize", width, height);
    m_width = width;
    m_height = height;
    setCurrentCanvasSize({width, height});
    sceneChanged();
    if (m_sizeChanged)
        m_sizeChanged();
}

} // namespace qrvkp
