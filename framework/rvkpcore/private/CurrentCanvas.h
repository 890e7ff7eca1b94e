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

/// The canvas size of the process's application, in canvas px: where a new track is centred.
/// 1920 x 1080 while there is no application.
CanvasSize currentCanvasSize();
/// Called by the configuration whenever its size changes.
void setCurrentCanvasSize(CanvasSize size);

} // namespace qrvkp
