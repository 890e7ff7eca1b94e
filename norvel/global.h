// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/norvel_export.h>

/// The version of the library, as numbers and as text.
#define NORVEL_VERSION_MAJOR 0
#define NORVEL_VERSION_MINOR 1
#define NORVEL_VERSION_PATCH 0
#define NORVEL_VERSION "0.1.0"
