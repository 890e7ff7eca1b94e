// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace norvel {

/// What a comparison of attribute records found. There is no value 0.
enum RvReturnVlaue : int {
    ReturnInvalid = 1,     ///< there is no record to compare with
    ReturnSame = 2,        ///< the same track, every compared field equal
    ReturnChanged = 3,     ///< the same track, at least one compared field differs
    ReturnOtherRecord = 4, ///< another track: the uuids differ
    ReturnNotFound = 5,    ///< a list holds no record of the same class that is the same track
};

} // namespace norvel
