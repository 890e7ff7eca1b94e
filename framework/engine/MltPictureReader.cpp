// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltPictureReader.h"

#include "FrameRate.h"
#include "LocalFile.h"
#include "MediaProbe.h"
#include "MltRuntime.h"
#include "YuvConverter.h"

#include <mlt++/Mlt.h>

#include <QString>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace rvengine {

namespace {

/// What the producer tells about the codec of its video stream.
std::string codecKey(Mlt::Producer& producer, const char* field)
{
    return "meta.media." + std::to_string(producer.get_int("video_index")) + ".codec." + field;
}

bool hasTransparency(Mlt::Producer& producer)
{
    // VP8 and VP9 keep it in a picture of its own, which their pixel format does not tell of.
    const std::string mode = "meta.attr." + std::to_string(producer.get_int("video_index")) +
                             ".stream.alpha_mode.markup";
    if (producer.get_int(mode.c_str()) == 1)
        return true;
    const char* const name = producer.get(codecKey(producer, "pix_fmt").c_str());
    const QString format = QString::fromLatin1(name ? name : "");
    return format.startsWith(QLatin1String("yuva")) || format.startsWith(QLatin1String("gbrap")) ||
           format.startsWith(QLatin1String("ya")) || format == QLatin1String("rgba") ||
           format == QLatin1String("bgra") || format == QLatin1String("argb") ||
           format == QLatin1String("abgr") || format.startsWith(QLatin1String("rgba64")) ||
           format.startsWith(QLatin1String("bgra64")) || format == QLatin1String("pal8");
}

/// A size that is worth converting to: a smaller picture is cheaper in every later step, and a
/// slightly larger one is cheaper to make here than by a painter.
bool isWorthConverting(QSize wanted, QSize size)
{
    return !wanted.isEmpty() && wanted.width() <= 2 * size.width() &&
           wanted.height() <= 2 * size.height();
}

} // namespace

struct MltPictureReader::Media
{
    QSize size;
    Mlt::Profile profile;
    Mlt::Producer producer;
    bool transparent = false;
    YuvConverter converter;

    Media(const MediaInfo& info, const std::string& name)
        : size(info.width, info.height)
        , profile()
        , producer(prepared(profile, info), "avformat", name.c_str())
    {
    }

    static Mlt::Profile& prepared(Mlt::Profile& profile, const MediaInfo& info)
    {
        const FrameRate rate = frameRateOf(info.frameRate);
        profile.set_frame_rate(rate.numerator, rate.denominator);
        profile.set_width(info.width);
        profile.set_height(info.height);
        profile.set_sample_aspect(1, 1);
        profile.set_progressive(1);
        profile.set_colorspace(709);
        profile.set_explicit(1);
        return profile;
    }
};

std::unique_ptr<MltPictureReader> MltPictureReader::open(const std::string& path)
{
    // The probe knows the file, unless it vanished or was changed.
    const auto info = mediaProbe().probe(path, MediaKind::Video);
    const auto file = readableFile(path);
    if (!info || !file || !isNameForMlt(file->u8string()))
        return nullptr;
    const std::lock_guard lock(mltOpening());
    auto media = std::make_unique<Media>(*info, file->u8string());
    if (!media->producer.is_valid())
        return nullptr;
    // Placements speak of the picture as it is stored.
    media->producer.set("autorotate", 0);
    media->producer.set("audio_index", -1);
    // MLT would convert to the colours of the profile, and loses the range of full ones then.
    const int colors = media->producer.get_int(codecKey(media->producer, "colorspace").c_str());
    if (colors > 0)
        media->profile.set_colorspace(colors);
    media->transparent = hasTransparency(media->producer);
    return std::unique_ptr<MltPictureReader>(new MltPictureReader(std::move(media)));
}

MltPictureReader::MltPictureReader(std::unique_ptr<Media> media)
    : m_media(std::move(media))
{
}

MltPictureReader::~MltPictureReader() = default;

int MltPictureReader::indexAt(double fileTime) const
{
    // Times are whole milliseconds: half of one before a picture begins is meant for it.
    const double index = std::floor((fileTime + 0.5) * m_media->profile.fps() / 1000.0);
    if (std::isnan(index))
        return 0;
    const int last = std::max(m_media->producer.get_length() - 1, 0);
    return static_cast<int>(std::clamp(index, 0.0, static_cast<double>(last)));
}

QImage MltPictureReader::picture(double fileTime, QSize wanted)
{
    const QSize size = isWorthConverting(wanted, m_media->size) ? wanted : m_media->size;
    const int index = indexAt(fileTime);
    if (index == m_lastIndex && m_last.size() == size)
        return m_last;
    QImage picture = read(index, size);
    if (!picture.isNull()) {
        m_last = std::move(picture);
        m_lastIndex = index;
    }
    return m_last;
}

QImage MltPictureReader::read(int index, QSize size)
{
    m_media->producer.seek(index);
    const std::unique_ptr<Mlt::Frame> frame(m_media->producer.get_frame());
    if (!frame || !frame->is_valid())
        return {};
    // The chroma of odd sizes has no agreed layout.
    const bool planar =
        !m_media->transparent && m_media->size.width() % 2 == 0 && m_media->size.height() % 2 == 0;
    mlt_image_format format = planar ? mlt_image_yuv420p : mlt_image_rgba;
    int width = m_media->size.width();
    int height = m_media->size.height();
    const std::uint8_t* const pixels = frame->get_image(format, width, height);
    if (!pixels || width <= 0 || height <= 0 || frame->get_int("test_image") != 0)
        return {};
    if (format == mlt_image_yuv420p)
        return m_media->converter.convert(
            pixels, QSize(width, height),
            {frame->get_int("colorspace"),
             frame->get_int("full_range") != 0 || frame->get_int("full_luma") != 0},
            size);
    if (format != mlt_image_rgba)
        return {};
    const QImage straight(pixels, width, height, width * 4, QImage::Format_RGBA8888);
    return straight.convertToFormat(m_media->transparent ? QImage::Format_ARGB32_Premultiplied
                                                         : QImage::Format_RGB32);
}

} // namespace rvengine
