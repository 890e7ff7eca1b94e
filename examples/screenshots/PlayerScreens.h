// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QString>

/// Pictures of the player widgets at work, 800 x 500 px.
///
/// Each function makes a host with videos of its own, which ffmpeg writes into `folder`, and takes
/// it down again. They need a `QApplication` and take some seconds. The picture is null when a
/// video cannot be made, or does not show up in time.
class PlayerScreens
{
public:
    /// A `QLabPlayer`, paused in a video, with icons.
    static QImage simplePlayer(const QString& folder);
    /// A `QLabComparePlayer` over two videos, with an icon on its line and a hint on each side.
    static QImage comparePlayer(const QString& folder);
};
