// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/scene/Scene.h>
#include <rvkpcore/RvKpTimeLine.h>
#include <rvkpcore/private/CurrentCanvas.h>

namespace qrvkp {

/// The timeline as it is now, for a renderer in another thread. Called in the host's thread. Tracks
/// that did not change since the last capture are shared with it.
rvengine::ScenePointer captureScene(const RvKpTimeLine& timeline, CanvasSize canvas);

} // namespace qrvkp
