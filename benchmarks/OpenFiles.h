// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>

/// How many descriptors of this process are open on files below `folder`.
std::size_t openFilesBelow(const std::string& folder);
