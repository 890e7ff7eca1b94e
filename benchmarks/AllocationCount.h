// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>

/// The bytes that the process holds through `operator new` at this moment, as the C library rounds
/// them. What Qt allocates with `malloc` (texts of QString, pixels) is not in it.
std::size_t allocatedBytes();

/// The bytes that the process holds of the C library's heap at this moment, by `malloc` too.
std::size_t heapBytes();
