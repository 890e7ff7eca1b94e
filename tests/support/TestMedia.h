// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <string>

/// Makes small media files for tests, with the programs ffmpeg and ffprobe.
///
/// Every function that makes a file takes the folder and the name of the file, whose extension
/// tells the format, and returns the path in UTF-8. What cannot be made is a test failure, and the
/// path is empty.
class TestMedia
{
public:
    /// A moving test card. `frameRate` is as ffmpeg takes it: "25", "30000/1001".
    static std::string video(const QString& folder, const QString& name, int width, int height,
                             const QString& frameRate, double seconds, bool withSound = true);

    /// A still test card; the format is that of the extension.
    static std::string picture(const QString& folder, const QString& name, int width, int height);

    /// A tone.
    static std::string sound(const QString& folder, const QString& name, double seconds);

    /// A tone with a cover picture; "mp3" and "m4a" can hold one.
    static std::string soundWithCover(const QString& folder, const QString& name, double seconds);

    /// A file with this content, in place of the one that may be there.
    static std::string file(const QString& folder, const QString& name, const QByteArray& content);

    /// A copy of the file `source` under a name that need not suit its format.
    static std::string copy(const std::string& source, const QString& folder, const QString& name);

    /// A file with the first `size` bytes of `source`.
    static std::string truncated(const std::string& source, const QString& folder,
                                 const QString& name, int size);

    /// The content of a file.
    static QByteArray content(const std::string& path);

    /// The length in milliseconds that ffprobe tells, -1 when it tells none.
    static double durationMs(const std::string& path);
};
