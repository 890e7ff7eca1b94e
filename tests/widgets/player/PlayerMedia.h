// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <support/FrameworkRef.h>

#include <rvkpcore/RvKpTimeLine.h>

#include <QColor>
#include <QString>

/// Files of one colour for the players: made when they are first asked for, in a folder that goes
/// with the program, whose name has spaces and Chinese letters.
class PlayerMedia
{
public:
    /// A video without sound; `seconds` long.
    static QString video(const QColor& colour, int width, int height, double seconds);
    static QString red(int width, int height, double seconds);
    static QString blue(int width, int height, double seconds);
    /// A video of so many numbered pictures, 25 a second, over the whole canvas.
    static QString numbers(int pictures);
    /// A still picture.
    static QString picture(const QColor& colour, int width, int height);
    /// A file that is neither.
    static QString text();
    /// The path of a file that does not exist.
    static QString missing();

    /// A timeline of one group with this video.
    static FrameworkRef<qrvkp::RvKpTimeLine> timelineOf(const QString& video);

private:
    static QString folder();
};
