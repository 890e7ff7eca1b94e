// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PictureProbe.h"

#include "LocalFile.h"
#include "PictureCompleteness.h"
#include "PictureDecoder.h"

#include <QGuiApplication>
#include <QImageReader>

namespace rvengine {

namespace {

/// A reader of a file that judges it by its content.
class ContentReader
{
public:
    explicit ContentReader(const std::filesystem::path& path)
    {
        m_reader.setDecideFormatFromContent(true);
        m_reader.setAutoTransform(true);
        if (openForReading(m_file, path))
            m_reader.setDevice(&m_file);
    }

    bool isPicture() const { return m_file.isOpen() && m_reader.canRead(); }

    /// Text in a scalable picture is laid out with fonts, which crashes without a QGuiApplication.
    bool isDrawable() const
    {
        return !m_reader.format().startsWith("svg") ||
               qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
    }

    bool isStill() const { return !m_reader.supportsAnimation() || m_reader.imageCount() <= 1; }

    /// Nothing of the file is missing at its end, as far as its format tells.
    bool isComplete()
    {
        m_file.seek(0);
        const bool complete = isCompletePicture(m_file, m_reader.format());
        m_file.seek(0);
        return complete;
    }

    QImage read() { return m_reader.read(); }

private:
    QFile m_file;
    QImageReader m_reader;
};

} // namespace

std::optional<MediaInfo> probePicture(const std::filesystem::path& path)
{
    ContentReader reader(path);
    QImage image;
    if (!reader.isPicture())
        image = decodePicture(path);
    else if (reader.isDrawable() && reader.isComplete())
        image = reader.read();
    if (image.isNull())
        return std::nullopt;
    return MediaInfo{image.width(), image.height(), 0};
}

bool isStillPicture(const std::filesystem::path& path)
{
    const ContentReader reader(path);
    return reader.isPicture() && reader.isStill();
}

} // namespace rvengine
