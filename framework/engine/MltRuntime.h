// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <mutex>
#include <string>

namespace rvengine {

/// Makes MLT ready for use, once in a process; any thread may call it any number of times. False
/// when MLT has no modules to work with.
///
/// MLT then stays until the process ends. If nobody started it before, it writes nothing about
/// broken files to stderr, and its LADSPA module, which looks for a sound server, stays out unless
/// the environment variable MLT_REPOSITORY_DENY says otherwise. No application object is made.
bool startMltRuntime();

/// To be held while a producer, filter or consumer is made: MLT sets up its modules and its
/// registry without a lock of its own.
std::mutex& mltOpening();

/// False for a path with which MLT cannot be asked to open a file: it takes a backslash before a
/// question mark for an escape of its own and crashes.
bool isNameForMlt(const std::string& path);

} // namespace rvengine
