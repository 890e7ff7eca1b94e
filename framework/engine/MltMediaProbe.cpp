// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltRuntime.h"
#include "StreamProbe.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace rvengine {

namespace {

/// At 1000 frames a second MLT counts in milliseconds.
constexpr int FramesPerSecond = 1000;
/// The length that MLT gives to what has none of its own.
constexpr int EndlessLength = std::numeric_limits<int>::max();

class MillisecondProfile
{
public:
    MillisecondProfile()
    {
        m_profile.set_frame_rate(FramesPerSecond, 1);
        m_profile.set_explicit(1);
    }

    Mlt::Profile& get() { return m_profile; }

private:
    Mlt::Profile m_profile;
};

std::string streamKey(Mlt::Producer& producer, const char* field)
{
    const int stream = producer.get_int("video_index");
    return "meta.media." + std::to_string(stream) + "." + field;
}

/// Whether a codec is one that picture files use; most of them serve moving pictures as well.
bool isPictureCodec(std::string_view codec)
{
    constexpr std::array<std::string_view, 11> PictureCodecs{
        "bmp",   "dpx", "exr", "gif",   "jpeg2000", "libopenjpeg",
        "mjpeg", "png", "ppm", "targa", "tiff",
    };
    return std::find(PictureCodecs.begin(), PictureCodecs.end(), codec) != PictureCodecs.end();
}

/// Whether the video stream is one picture: the cover of a sound file, which has no frame rate, or
/// a picture file that Qt has no plugin for, which lasts one frame at FFmpeg's rate of 25. Such a
/// file with a name like "a%03d.tiff" seems longer, but cannot be sought in. Other codecs need not
/// be seekable: MLT finds some Flash videos are not, and they are videos all the same.
bool isSinglePicture(Mlt::Producer& producer)
{
    constexpr int PictureFileLengthMs = 40;
    const char* const name = producer.get(streamKey(producer, "codec.name").c_str());
    const std::string_view codec = name ? name : "";
    // MLT gives a WebP picture some length of its own; FFmpeg cannot decode a moving one.
    if (codec == "webp")
        return true;
    if (!isPictureCodec(codec))
        return false;
    const double rate = producer.get_double(streamKey(producer, "stream.frame_rate").c_str());
    return std::isnan(rate) || producer.get_int("seekable") == 0 ||
           producer.get_length() <= PictureFileLengthMs;
}

bool hasFiniteLength(Mlt::Producer& producer)
{
    return producer.get_length() > 0 && producer.get_length() < EndlessLength;
}

std::optional<MediaInfo> videoInfo(Mlt::Producer& producer)
{
    if (producer.get_int("video_index") < 0 || isSinglePicture(producer))
        return std::nullopt;
    const int width = producer.get_int(streamKey(producer, "codec.width").c_str());
    const int height = producer.get_int(streamKey(producer, "codec.height").c_str());
    if (width <= 0 || height <= 0)
        return std::nullopt;
    const double rate = producer.get_double(streamKey(producer, "stream.frame_rate").c_str());
    return MediaInfo{width, height, producer.get_length(), std::isfinite(rate) ? rate : 0.0};
}

std::optional<MediaInfo> soundInfo(Mlt::Producer& producer)
{
    if (producer.get_int("audio_index") < 0)
        return std::nullopt;
    return MediaInfo{0, 0, producer.get_length(), 0.0};
}

} // namespace

std::optional<MediaInfo> probeStream(const std::filesystem::path& path, MediaKind kind)
{
    const std::string name = path.u8string();
    if (!startMltRuntime() || !isNameForMlt(name))
        return std::nullopt;
    static MillisecondProfile profile;
    const std::lock_guard<std::mutex> lock(mltOpening());
    Mlt::Producer producer(profile.get(), "avformat", name.c_str());
    if (!producer.is_valid() || !hasFiniteLength(producer))
        return std::nullopt;
    return kind == MediaKind::Video ? videoInfo(producer) : soundInfo(producer);
}

} // namespace rvengine
