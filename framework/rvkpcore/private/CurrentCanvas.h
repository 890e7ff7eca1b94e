// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace qrvkp {

/// Canvas px.
struct CanvasSize
{
    float width = 1920.0F;
    float height = 1080.0F;
};

/// The canvas on which a new track is centred, whose timeline nobody knows yet: that of the oldest
/// application of the process; 1920 x 1080 while there is none. Thread-safe.
CanvasSize currentCanvasSize();

} // namespace qrvkp
