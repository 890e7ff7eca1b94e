// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

/// Pictures of the recorder's dialog on a dark ground, 800 x 500 px.
///
/// They need a `QApplication`, and the pictures of the dialog's style sheet in its resources. The
/// machine's sound is left alone: device, time and level are made up, and nobody is recorded.
class RecorderScreens
{
public:
    /// The dialog as it opens.
    static QImage idle();
    /// The dialog some seconds after a click on its button.
    static QImage recording();
};
