// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

#include <vector>

/// A picture of a widget of the library in use.
struct Screenshot
{
    const char* name; ///< of the file: NAME.png
    QImage (*make)(); ///< makes it; null when something failed
};

/// All pictures that the documents show.
const std::vector<Screenshot>& screenshots();
