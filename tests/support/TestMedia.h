// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include <string>
#include <vector>

/// How the colours of a video are stored.
struct StoredColors
{
    QString matrix = "bt709";        ///< as ffmpeg's scale filter names it: "bt601", "bt709"
    bool fullRange = false;          ///< luma from 0 to 255, not from 16 to 235
    QString pixelFormat = "yuv420p"; ///< as ffmpeg names it
    QStringList codec = {"-c:v", "libx264", "-qp", "0"};
};

/// A picture of a video as the program ffmpeg decodes it.
struct DecodedPicture
{
    double seconds = 0.0; ///< its time stamp
    QImage image;         ///< Format_ARGB32
};

/// Makes small media files for tests, with the programs ffmpeg and ffprobe.
///
/// Every function that makes a file takes the folder and the name of the file, whose extension
/// tells the format, and returns the path in UTF-8. What cannot be made is a test failure, and the
/// path is empty.
class TestMedia
{
public:
    /// What ffmpeg makes of these arguments, which come before the name of the file.
    static std::string made(const QString& folder, const QString& name,
                            const QStringList& arguments);

    /// A moving test card. `frameRate` is as ffmpeg takes it: "25", "30000/1001".
    static std::string video(const QString& folder, const QString& name, int width, int height,
                             const QString& frameRate, double seconds, bool withSound = true);

    /// A video without sound whose pictures carry their number, counted from 0, in 16 upright bars:
    /// bit b of the number is bar b from the left, white for 1. `codec` is how it is encoded: the
    /// default has one key frame at the start, and pictures that are not stored in their order.
    static std::string numberedVideo(const QString& folder, const QString& name, int width,
                                     int height, const QString& frameRate, int frames,
                                     const QStringList& codec = {"-c:v", "libx264", "-g", "250",
                                                                 "-bf", "3", "-pix_fmt",
                                                                 "yuv420p"});

    /// The number that a picture of `numberedVideo` carries, which fills `area` of `picture`; -1
    /// when a bar is neither black nor white.
    static int frameNumber(const QImage& picture, QRect area);
    static int frameNumber(const QImage& picture) { return frameNumber(picture, picture.rect()); }

    /// A copy of a video that says that it is to be shown turned by so many degrees.
    static std::string turnedVideo(const std::string& source, const QString& folder,
                                   const QString& name, int degrees = 90);

    /// A video without sound of one colour, with its transparency where the format has one; 25
    /// pictures a second.
    static std::string solidVideo(const QString& folder, const QString& name, int width, int height,
                                  const QColor& color, const StoredColors& stored = {},
                                  double seconds = 0.4);

    /// A still picture of one colour, with its transparency where the format has one.
    static std::string solidPicture(const QString& folder, const QString& name, int width,
                                    int height, const QColor& color);

    /// A still test card; the format is that of the extension.
    static std::string picture(const QString& folder, const QString& name, int width, int height);

    /// A tone.
    static std::string sound(const QString& folder, const QString& name, double seconds);

    /// A sine of `frequency` Hz and that amplitude (1 is full) on all channels.
    static std::string tone(const QString& folder, const QString& name, double frequency,
                            double amplitude, double seconds, int channels = 1, int rate = 48000);

    /// Sound by formulas of the time t in seconds, as ffmpeg's aevalsrc takes them, one for each
    /// channel. Stored in floating point if the name ends in ".wav".
    static std::string wave(const QString& folder, const QString& name, const QStringList& channels,
                            double seconds, int rate = 48000);

    /// A tone with a cover picture; "mp3" and "m4a" can hold one.
    static std::string soundWithCover(const QString& folder, const QString& name, double seconds);

    /// Whether a file can have this name on the platform.
    static bool isFileName(const QString& name);

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

    /// What ffprobe tells of the first stream of a type ("v" or "a"), for instance "codec_name" or
    /// "width,nb_read_frames"; empty when there is no such stream. Several entries come in one line
    /// with commas, in the order in which ffprobe has them.
    static QString streamEntry(const std::string& path, const QString& type, const QString& entry);

    /// The sound of a file as ffmpeg decodes it: interleaved stereo at 48000 Hz, -1 to 1. `filter`
    /// is a chain of ffmpeg's filters that it goes through.
    static std::vector<float> samples(const std::string& path, const QString& filter = {});

    /// All pictures of a video as ffmpeg decodes them, scaled to `size` after `filter`, if any.
    static std::vector<DecodedPicture> pictures(const std::string& path, QSize size,
                                                const QString& filter = {},
                                                const QString& decoder = {});
};
