// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

namespace qrvkp {

/// Counts a call of `name`; true when this call was asked to fail.
RVKPCORE_EXPORT bool shouldFail(const char* name);

} // namespace qrvkp
