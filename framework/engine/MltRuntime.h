// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace rvengine {

/// Makes MLT ready for use, once in a process; any thread may call it any number of times. False
/// when MLT has no modules to work with.
///
/// MLT then stays until the process ends. If nobody started it before, it writes nothing about
/// broken files to stderr, and its LADSPA module, which looks for a sound server, stays out unless
/// the environment variable MLT_REPOSITORY_DENY says otherwise. No application object is made.
bool startMltRuntime();

} // namespace rvengine
