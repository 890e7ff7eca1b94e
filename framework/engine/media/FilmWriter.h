// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "FrameRate.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace rvengine {

/// What a film is to be.
struct FilmFormat
{
    QSize size; ///< px, even sides
    FrameRate rate;
    int videoBitRate = 0; ///< bits a second; 0 leaves it to the encoder
    int audioBitRate = 0; ///< bits a second; 0 leaves it to the encoder
};

/// Whether the extension of the path is that of a format for videos.
bool isFilmName(const std::string& path);

/// Writes pictures and sound to a file, in the format of its extension.
///
/// It writes beside the file, which gets its place at the end, so that one that stands there is
/// there until then. An operation that fails leaves a text in `error`, in FFmpeg's words where it
/// has some; nothing but the destructor may follow it. One thread at a time; `prepare` may run
/// beside the others, in another one.
class FilmWriter
{
public:
    /// A picture in the form in which it is encoded.
    class Prepared;

    /// Starts a file of UTF-8 path `path`; null when that fails.
    static std::unique_ptr<FilmWriter> open(const std::string& path, const FilmFormat& format,
                                            QString& error);
    /// Removes what was written, unless it was put in its place.
    ~FilmWriter();

    /// Converts a picture of the film's size, Format_RGB32; null when that fails.
    std::shared_ptr<Prepared> prepare(const QImage& picture);
    /// Appends the picture.
    bool addPicture(const Prepared& picture, QString& error);
    /// Appends sound, interleaved stereo at `SoundRate`.
    bool addSound(const std::vector<float>& samples, QString& error);
    /// Ends the film and puts the file in its place.
    bool finish(QString& error);
    /// Like `finish`, but leaves a file that stands there already, and removes the new one.
    bool finishUnlessThere(QString& error);

private:
    struct Output;
    explicit FilmWriter(std::unique_ptr<Output> output);

    const std::unique_ptr<Output> m_output;
};

} // namespace rvengine
