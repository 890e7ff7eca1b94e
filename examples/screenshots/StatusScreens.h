// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

/// Pictures of a `systemstatus` beside an editor's picture, 800 x 500 px, with the numbers and texts
/// of one certain machine. They need a `QApplication`.
class StatusScreens
{
public:
    /// The panel as it starts.
    static QImage collapsed();
    /// The panel with its details.
    static QImage expanded();
};
