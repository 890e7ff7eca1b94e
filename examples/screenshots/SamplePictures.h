// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

/// Pictures to show the widgets over, drawn in flat colours.
namespace samplePictures {

/// Hills, a sun and a grid of marks, by which a part of the picture is recognised.
QImage landscape(const QSize& size);
/// A face in the middle; `faceRect` tells where.
QImage face(const QSize& size);
QRect faceRect(const QSize& size);

} // namespace samplePictures
