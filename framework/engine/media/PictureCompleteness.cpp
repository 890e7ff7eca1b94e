// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PictureCompleteness.h"

#include <QtEndian>

#include <cstdlib>

namespace rvengine {

namespace {

/// The bytes of a file with a reading position; every read beyond the end gives 0 and is noted.
class Cursor
{
public:
    Cursor(const QByteArray& data, qint64 position)
        : m_data(data)
        , m_position(position)
    {
    }

    bool isBeyond() const { return m_position > m_data.size(); }
    void skip(qint64 count) { m_position += count; }
    quint8 next()
    {
        const qint64 at = m_position++;
        return at < m_data.size() ? static_cast<quint8>(m_data.at(static_cast<int>(at)))
                                  : quint8(0);
    }

private:
    const QByteArray& m_data;
    qint64 m_position;
};

/// The next marker of a JPEG stream. Entropy-coded data in between is passed over: a 0xFF in it is
/// followed by 0, or is a restart marker (0xD0 to 0xD7).
quint8 nextJpegMarker(Cursor& cursor)
{
    while (!cursor.isBeyond()) {
        if (cursor.next() != 0xFF)
            continue;
        quint8 marker = cursor.next();
        while (marker == 0xFF)
            marker = cursor.next();
        const bool isRestart = marker >= 0xD0 && marker <= 0xD7;
        if (marker != 0 && !isRestart)
            return marker;
    }
    return 0;
}

bool isCompleteJpeg(const QByteArray& data)
{
    constexpr quint8 EndOfImage = 0xD9;
    Cursor cursor(data, 2);
    while (!cursor.isBeyond()) {
        if (nextJpegMarker(cursor) == EndOfImage)
            return !cursor.isBeyond();
        const int high = cursor.next();
        const int length = high * 256 + cursor.next();
        cursor.skip(length - 2);
    }
    return false;
}

void skipGifSubBlocks(Cursor& cursor)
{
    while (const quint8 size = cursor.next())
        cursor.skip(size);
}

void skipGifColorTable(Cursor& cursor, quint8 flags)
{
    if (flags & 0x80)
        cursor.skip(3LL << ((flags & 7) + 1));
}

void skipGifImage(Cursor& cursor)
{
    cursor.skip(8);
    skipGifColorTable(cursor, cursor.next());
    cursor.skip(1);
    skipGifSubBlocks(cursor);
}

bool isCompleteGif(const QByteArray& data)
{
    constexpr quint8 Image = 0x2C;
    constexpr quint8 Extension = 0x21;
    constexpr quint8 Trailer = 0x3B;
    Cursor cursor(data, 10);
    const quint8 flags = cursor.next();
    cursor.skip(2);
    skipGifColorTable(cursor, flags);
    while (!cursor.isBeyond()) {
        const quint8 block = cursor.next();
        if (block == Trailer)
            return true;
        if (block == Image) {
            skipGifImage(cursor);
        } else if (block == Extension) {
            cursor.skip(1);
            skipGifSubBlocks(cursor);
        } else {
            return false;
        }
    }
    return false;
}

/// Whether the rows of an uncompressed bitmap are there; a compressed one is taken as it is.
bool isCompleteBmp(const QByteArray& data)
{
    constexpr int HeaderSize = 34;
    constexpr quint32 BitFields = 3;
    if (data.size() < HeaderSize)
        return false;
    const auto number = [&data](int offset) {
        return qFromLittleEndian<quint32>(data.constData() + offset);
    };
    const quint32 infoSize = number(14);
    const quint32 compression = number(30);
    if (infoSize < 40 || (compression != 0 && compression != BitFields))
        return true;
    const qint64 width = static_cast<qint32>(number(18));
    const qint64 height = std::llabs(static_cast<qint32>(number(22)));
    const qint64 bitsPerPixel = number(28) & 0xFFFF;
    const qint64 rowBytes = (width * bitsPerPixel + 31) / 32 * 4;
    return number(10) + rowBytes * height <= data.size();
}

} // namespace

bool isCompletePicture(QIODevice& device, const QByteArray& format)
{
    if (format == "jpeg" || format == "jpg")
        return isCompleteJpeg(device.readAll());
    if (format == "gif")
        return isCompleteGif(device.readAll());
    if (format == "bmp")
        return isCompleteBmp(device.readAll());
    return true;
}

} // namespace rvengine
