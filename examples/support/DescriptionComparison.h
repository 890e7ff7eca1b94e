// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/timeline/RvTimeLineAttribute.h>

#include <string>
#include <vector>

/// How two descriptions of a timeline differ in what they say of it: a line for every difference,
/// none when they describe the same timeline.
///
/// Unlike `RvAttribute::compare` it looks at every field that a capture fills: tags, per-face files
/// and group orders too, masks by their pictures, and the strokes of a liquify by what was saved in
/// its folder. Main records are compared in order; mix records by uuid, because a track that is
/// created anew is the last one.
std::vector<std::string> differences(const norvel::RvTimeLineAttribute& stored,
                                     const norvel::RvTimeLineAttribute& live);

/// The same for two records of one track; the lines name the fields.
std::vector<std::string> differences(const norvel::RvAttribute& stored,
                                     const norvel::RvAttribute& live);
