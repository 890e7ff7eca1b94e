// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointF>

#include <cmath>

namespace qrvkp {

/// What a conversion gives: the converted point, or the given one where no point can be computed.
/// Where one coordinate is not finite, the other one is worth nothing either.
inline QPointF finiteOr(const QPointF& converted, const QPointF& given)
{
    return std::isfinite(converted.x()) && std::isfinite(converted.y()) ? converted : given;
}

} // namespace qrvkp
