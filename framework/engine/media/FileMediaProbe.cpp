// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "DisplayGeometry.h"
#include "MediaFile.h"
#include "StreamProbe.h"

#include <cmath>

namespace rvengine {

namespace {

/// Decoders of files that lie may ask for more; nobody shows pictures that fast.
constexpr double fastest = 1000.0;

double frameRateOf(const MediaFile& file)
{
    const AVRational rate = av_guess_frame_rate(file.format(), file.video(), nullptr);
    const double perSecond = rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 0.0;
    return perSecond <= fastest ? perSecond : 0.0;
}

bool isDecodable(const AVStream* stream)
{
    return stream && avcodec_find_decoder(stream->codecpar->codec_id);
}

} // namespace

std::optional<MediaInfo> probeStream(const std::filesystem::path& path, MediaKind kind)
{
    const auto file = MediaFile::open(path.u8string());
    if (!file || !isDecodable(kind == MediaKind::Video ? file->video() : file->sound()))
        return std::nullopt;
    MediaInfo info;
    if (kind == MediaKind::Video) {
        const QSize size = displayGeometryOf(*file).size();
        info.width = size.width();
        info.height = size.height();
        info.frameRate = frameRateOf(*file);
    }
    if (kind == MediaKind::Video && file->isSinglePicture())
        return std::nullopt;
    const std::optional<double> length = file->measureLength();
    if (!length || *length <= 0.0)
        return std::nullopt;
    info.durationMs = std::llround(*length * 1000.0);
    return info;
}

} // namespace rvengine
