// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <string>

namespace norvel {

/// The caches of an edit history that a host may want to know of.
struct NORVEL_EXPORT RvEditorCacheData
{
    /// The folder that the most recent capture of a liquify track wrote, UTF-8; empty before the
    /// first one.
    std::string liquifyCacheDir;
};

} // namespace norvel
