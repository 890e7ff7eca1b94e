// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PictureFiles.h"

#include "LocalFile.h"
#include "PictureDecoder.h"

#include <QFile>
#include <QImageReader>

#include <algorithm>
#include <utility>

namespace rvengine {

namespace {

int halvingsFor(QSize size, QSize wanted)
{
    int times = 0;
    while (!wanted.isEmpty() && size.width() / 2 >= wanted.width() &&
           size.height() / 2 >= wanted.height()) {
        size /= 2;
        ++times;
    }
    return times;
}

} // namespace

PictureFiles::PictureFiles(MonotonicClock now, long long capacity)
    : m_capacity(capacity)
    , m_unreadable(std::move(now))
{
}

QImage PictureFiles::picture(const std::string& path, QSize wanted)
{
    const QImage whole = halved(path, 0);
    return whole.isNull() ? whole : halved(path, halvingsFor(whole.size(), wanted));
}

QImage PictureFiles::halved(const std::string& path, int times)
{
    const auto known = m_entries.find({path, times});
    if (known != m_entries.end()) {
        known->second.usedIn = m_frame;
        return known->second.picture;
    }
    QImage picture;
    if (times > 0) {
        const QImage larger = halved(path, times - 1);
        picture = larger
                      .scaled(std::max(larger.width() / 2, 1), std::max(larger.height() / 2, 1),
                              Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                      .convertToFormat(larger.format());
    } else if (m_unreadable.mayTry(path)) {
        picture = read(path);
        m_unreadable.tried(path, !picture.isNull());
    }
    if (!picture.isNull())
        m_entries[{path, times}] = {picture, m_frame};
    return picture;
}

void PictureFiles::put(const std::string& path, QImage picture)
{
    m_unreadable.tried(path, true);
    m_entries[{path, 0}] = {std::move(picture), m_frame};
}

bool PictureFiles::has(const std::string& path) const
{
    return m_entries.find({path, 0}) != m_entries.end();
}

QImage PictureFiles::read(const std::string& path)
{
    QImage picture;
    QFile file;
    const auto absolute = readableFile(path);
    if (absolute && openForReading(file, *absolute)) {
        // The content tells the format: an extension may be wrong.
        QImageReader reader(&file);
        reader.setDecideFormatFromContent(true);
        reader.setAutoTransform(true);
        if (reader.canRead())
            reader.read(&picture);
        else
            picture = decodePicture(*absolute);
    }
    return picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                             : QImage::Format_RGB32);
}

void PictureFiles::endFrame()
{
    long long bytes = 0;
    for (const auto& [key, entry] : m_entries)
        bytes += entry.picture.sizeInBytes();
    while (bytes > m_capacity) {
        const auto oldest =
            std::min_element(m_entries.begin(), m_entries.end(), [](const auto& a, const auto& b) {
                return a.second.usedIn < b.second.usedIn;
            });
        if (oldest->second.usedIn == m_frame)
            break;
        bytes -= oldest->second.picture.sizeInBytes();
        m_entries.erase(oldest);
    }
    ++m_frame;
}

} // namespace rvengine
