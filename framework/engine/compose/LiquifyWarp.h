// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/scene/Scene.h>

#include <QImage>
#include <QSize>

#include <memory>
#include <vector>

namespace rvengine {

/// What a list of liquify strokes does to a picture, each stroke to the result of the one before.
///
/// A stroke moves what lies within its radius, with the weight strength * (1 - d² / r²)² at the
/// distance d from its centre. A push moves by weight * (to - from); a bloat shows at p what was at
/// centre + (p - centre) * (1 - weight / 2), a pinch what was at centre + (p - centre) * (1 +
/// weight / 2). Beyond the border of the picture its border px go on.
///
/// Never changed once it was made: any thread may use it. Copies share what was computed.
class LiquifyWarp
{
public:
    /// Computes where the strokes move the px of a picture of that size, which their coordinates
    /// are of. Strokes with numbers that are not finite, without a radius above 0 or of an unknown
    /// style do nothing; strengths are limited to 0 to 1.
    LiquifyWarp(const std::vector<LiquifyStroke>& strokes, QSize pictureSize);

    /// Whether no px moves.
    bool isIdentity() const { return m_field == nullptr; }

    /// Moves the px of the picture, which may be rendered at another size than the strokes were
    /// made for. No px is moved by more than 8192 px. Pictures of other formats than RGB32 and
    /// ARGB32_Premultiplied become ARGB32_Premultiplied.
    void apply(QImage& picture) const;

private:
    struct Field;

    std::shared_ptr<const Field> m_field; ///< null when no px moves
};

} // namespace rvengine
