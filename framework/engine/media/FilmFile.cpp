// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FilmFile.h"

#include "FileBytes.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <utility>

namespace rvengine {

namespace {

constexpr int bufferBytes = 1 << 18;

/// What is read of the file while it is written.
struct Reading
{
    QFile file;

    static int readBytes(void* self, std::uint8_t* to, int size)
    {
        return readFrom(static_cast<Reading*>(self)->file, to, size);
    }
    static std::int64_t seekBytes(void* self, std::int64_t offset, int whence)
    {
        return seekIn(static_cast<Reading*>(self)->file, offset, whence);
    }
};

AVIOContext* contextOf(void* self, int (*read)(void*, std::uint8_t*, int),
                       int (*write)(void*, std::uint8_t*, int),
                       std::int64_t (*seek)(void*, std::int64_t, int))
{
    auto* buffer = static_cast<unsigned char*>(av_malloc(bufferBytes));
    if (!buffer)
        return nullptr;
    AVIOContext* const context =
        avio_alloc_context(buffer, bufferBytes, write ? 1 : 0, self, read, write, seek);
    if (!context)
        av_free(buffer);
    return context;
}

void freeContext(AVIOContext* context)
{
    if (!context)
        return;
    av_freep(&context->buffer);
    avio_context_free(&context);
}

} // namespace

FilmFile::FilmFile(QString path)
    : m_path(std::move(path))
{
}

FilmFile::~FilmFile()
{
    freeContext(m_bytes);
    if (m_isInPlace || m_file.fileName().isEmpty())
        return;
    m_file.close();
    m_file.remove();
}

bool FilmFile::open(QString& error)
{
    const QFileInfo place(m_path);
    const auto number = QRandomGenerator::global()->generate();
    const QString name = QStringLiteral("%1/.%2.%3.part")
                             .arg(place.absolutePath(), place.fileName().left(100))
                             .arg(number, 8, 16, QLatin1Char('0'));
    // With a buffer of FFmpeg's, one of Qt's would only copy once more.
    m_file.setFileName(name);
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::NewOnly | QIODevice::Unbuffered)) {
        error = QStringLiteral("the file cannot be written: %1").arg(m_file.errorString());
        m_file.setFileName(QString());
        return false;
    }
    m_bytes = contextOf(this, nullptr, &FilmFile::writeBytes, &FilmFile::seekBytes);
    return m_bytes != nullptr;
}

void FilmFile::attach(AVFormatContext& muxer)
{
    muxer.pb = m_bytes;
    muxer.opaque = this;
    muxer.io_open = &FilmFile::openToRead;
    muxer.io_close2 = &FilmFile::closeRead;
}

int FilmFile::writeBytes(void* self, std::uint8_t* from, int size)
{
    QFile& file = static_cast<FilmFile*>(self)->m_file;
    const qint64 count = file.write(reinterpret_cast<const char*>(from), size);
    return count == size ? size : AVERROR(ENOSPC);
}

std::int64_t FilmFile::seekBytes(void* self, std::int64_t offset, int whence)
{
    return seekIn(static_cast<FilmFile*>(self)->m_file, offset, whence);
}

// A muxer that puts its index in front reads what it wrote and moves it on.
int FilmFile::openToRead(AVFormatContext* muxer, AVIOContext** bytes, const char*, int flags,
                         AVDictionary**)
{
    if ((flags & AVIO_FLAG_WRITE) != 0)
        return AVERROR(EACCES);
    auto reading = std::make_unique<Reading>();
    reading->file.setFileName(static_cast<FilmFile*>(muxer->opaque)->m_file.fileName());
    if (!reading->file.open(QIODevice::ReadOnly))
        return AVERROR(EIO);
    *bytes = contextOf(reading.get(), &Reading::readBytes, nullptr, &Reading::seekBytes);
    if (!*bytes)
        return AVERROR(ENOMEM);
    static_cast<void>(reading.release()); // freed by closeRead
    return 0;
}

int FilmFile::closeRead(AVFormatContext*, AVIOContext* bytes)
{
    if (bytes)
        delete static_cast<Reading*>(bytes->opaque);
    freeContext(bytes);
    return 0;
}

bool FilmFile::putInPlace(QString& error)
{
    avio_flush(m_bytes);
    const bool isWritten = m_bytes->error >= 0 && m_file.error() == QFileDevice::NoError;
    if (isWritten)
        m_file.close();
    m_isInPlace = isWritten && replaceOld(error);
    if (!isWritten)
        error = m_file.errorString();
    if (!m_isInPlace)
        error = QStringLiteral("the file cannot be written: %1").arg(error);
    return m_isInPlace;
}

/// Renames the new file; the old one comes back if that fails.
bool FilmFile::replaceOld(QString& error)
{
    QFile old(m_path);
    // On Windows it stays where it is while another program has it open.
    const bool hadOld = old.exists();
    if (hadOld && !old.rename(m_file.fileName() + QStringLiteral(".old"))) {
        error = old.errorString();
        return false;
    }
    QFile written(m_file.fileName());
    const bool isInPlace = written.rename(m_path);
    if (!isInPlace)
        error = written.errorString();
    if (hadOld) {
        if (isInPlace)
            old.remove();
        else
            old.rename(m_path);
    }
    return isInPlace;
}

} // namespace rvengine
