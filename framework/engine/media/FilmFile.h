// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Ffmpeg.h"

#include <QFile>
#include <QString>

#include <memory>

namespace rvengine {

/// A file that a muxer writes beside its final place.
class FilmFile
{
public:
    explicit FilmFile(QString path);
    /// Removes the new file, unless it was put in its place.
    ~FilmFile();
    FilmFile(const FilmFile&) = delete;
    FilmFile& operator=(const FilmFile&) = delete;

    /// Makes the new file; false with a text when that fails.
    bool open(QString& error);
    /// Lets the muxer write here, and read what it wrote.
    void attach(AVFormatContext& muxer);
    /// Writes what is buffered and puts the file in its place; a file there is replaced.
    bool putInPlace(QString& error);
    bool isPlaceTaken() const { return QFile::exists(m_path); }

private:
    bool replaceOld(QString& error);
    static int writeBytes(void* self, std::uint8_t* from, int size);
    static std::int64_t seekBytes(void* self, std::int64_t offset, int whence);
    static int openToRead(AVFormatContext* muxer, AVIOContext** bytes, const char* url, int flags,
                          AVDictionary** options);
    static int closeRead(AVFormatContext* muxer, AVIOContext* bytes);

    const QString m_path;
    QFile m_file;
    AVIOContext* m_bytes = nullptr;
    bool m_isInPlace = false;
};

} // namespace rvengine
