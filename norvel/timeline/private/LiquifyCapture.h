// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARLiquifyAttribute.h>

#include <QtGlobal>

namespace qkpar {
class RvARLiquifyTrack;
} // namespace qkpar

namespace norvel {

/// Describes the strokes of a liquify track: the last one in the record, all of them in a folder of
/// the undo cache that is named by `milliseconds` since the epoch. Confirms the pending stroke.
///
/// Captures of one millisecond share the folder. When the strokes cannot be saved, the record has
/// no folder.
void captureStrokes(RvARLiquifyAttribute& record, qkpar::RvARLiquifyTrack& track,
                    qint64 milliseconds);

} // namespace norvel
