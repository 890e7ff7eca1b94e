// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpConfig.h>

#include <rvkpcore/private/ApplicationCanvas.h>
#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/SceneChanges.h>

namespace qrvkp {

RvKpConfig::RvKpConfig()
    : m_canvas(std::make_unique<ApplicationCanvas>())
{
}

RvKpConfig::~RvKpConfig() = default;

float RvKpConfig::getKpSizeWidth() const
{
    return m_canvas->size().width;
}

float RvKpConfig::getKpSizeHeight() const
{
    return m_canvas->size().height;
}

void RvKpConfig::setKpSize(float width, float height)
{
    calls::record("RvKpConfig::setKpSize", width, height);
    m_canvas->setSize({width, height});
    if (m_sizeChanged)
        m_sizeChanged();
    sceneChanged();
}

} // namespace qrvkp
