// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

/// Starts MLT once, without its messages and without its module of sound cards; false if it cannot.
bool startMlt();
