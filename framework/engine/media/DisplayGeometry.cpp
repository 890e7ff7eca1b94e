// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "DisplayGeometry.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace rvengine {

namespace {

/// The nearest turn by quarters that the matrix of a stream tells; FFmpeg's matrices have rows for
/// x, y and the offset, in 16.16 fixed point.
QTransform turnOf(const AVStream& stream)
{
    std::int32_t matrix[9];
    std::size_t size = 0;
    const std::uint8_t* const data =
        av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (!data || size < sizeof matrix)
        return {};
    std::memcpy(matrix, data, sizeof matrix);
    const auto sign = [](double value) { return value > 0.0 ? 1.0 : value < 0.0 ? -1.0 : 0.0; };
    const double a = matrix[0];
    const double b = matrix[1];
    const double c = matrix[3];
    const double d = matrix[4];
    if (std::abs(a) + std::abs(d) >= std::abs(b) + std::abs(c))
        return a * d == 0.0 ? QTransform() : QTransform(sign(a), 0, 0, sign(d), 0, 0);
    return b * c == 0.0 ? QTransform() : QTransform(0, sign(b), sign(c), 0, 0, 0);
}

QSize squaredSize(const MediaFile& file)
{
    constexpr double most = 16384.0;
    AVStream* const stream = file.video();
    const QSize stored(stream->codecpar->width, stream->codecpar->height);
    const AVRational pixel = av_guess_sample_aspect_ratio(file.format(), stream, nullptr);
    if (pixel.num <= 0 || pixel.den <= 0)
        return stored;
    const double width = std::round(stored.width() * av_q2d(pixel));
    return width < 1.0 || width > most ? stored : QSize(static_cast<int>(width), stored.height());
}

} // namespace

DisplayGeometry displayGeometryOf(const MediaFile& file)
{
    return {squaredSize(file), turnOf(*file.video())};
}

} // namespace rvengine
