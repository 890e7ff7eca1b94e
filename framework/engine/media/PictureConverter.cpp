// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PictureConverter.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <utility>

namespace rvengine {

namespace {

/// The byte order of a QRgb.
constexpr AVPixelFormat rgbFormat =
    Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? AV_PIX_FMT_BGRA : AV_PIX_FMT_ARGB;

bool isTransparent(AVPixelFormat format)
{
    const AVPixFmtDescriptor* const description = av_pix_fmt_desc_get(format);
    return description && (description->flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
}

/// The old names of formats say what the range is.
bool isFullRange(const AVFrame& frame)
{
    switch (frame.format) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ444P:
    case AV_PIX_FMT_YUVJ440P:
    case AV_PIX_FMT_YUVJ411P:
        return true;
    default:
        return frame.color_range == AVCOL_RANGE_JPEG;
    }
}

int standardOf(const AVFrame& frame)
{
    constexpr int linesOfHighDefinition = 720;
    switch (frame.colorspace) {
    case AVCOL_SPC_BT709:
        return SWS_CS_ITU709;
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
        return SWS_CS_ITU601;
    case AVCOL_SPC_FCC:
        return SWS_CS_FCC;
    case AVCOL_SPC_SMPTE240M:
        return SWS_CS_SMPTE240M;
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL:
        return SWS_CS_BT2020;
    default:
        return frame.height >= linesOfHighDefinition ? SWS_CS_ITU709 : SWS_CS_ITU601;
    }
}

/// Whole pictures need no filter; smaller ones average what they leave out. Nothing is left to
/// chance in the chroma of odd sizes.
int flagsFor(QSize from, QSize to)
{
    if (from != to)
        return SWS_BILINEAR;
    const bool isOdd = from.width() % 2 != 0 || from.height() % 2 != 0;
    return isOdd ? SWS_BILINEAR | SWS_FULL_CHR_H_INT : SWS_FAST_BILINEAR;
}

constexpr int one = 1 << 16; ///< brightness 0, contrast and saturation 1 in the scaler's terms

} // namespace

bool PictureConverter::setUp(const Setup& setup, int flags)
{
    if (m_scaler && setup == m_setup)
        return true;
    const auto [width, height, format, newWidth, newHeight, newFormat, standard, fullRange,
                newFullRange] = setup;
    m_scaler.reset(sws_getContext(width, height, static_cast<AVPixelFormat>(format), newWidth,
                                  newHeight, static_cast<AVPixelFormat>(newFormat), flags, nullptr,
                                  nullptr, nullptr));
    if (!m_scaler)
        return false;
    const int* const coefficients = sws_getCoefficients(standard);
    // Fails where neither side has colours to convert.
    sws_setColorspaceDetails(m_scaler.get(), coefficients, fullRange, coefficients, newFullRange, 0,
                             one, one);
    m_setup = setup;
    return true;
}

QImage PictureConverter::toImage(const AVFrame& frame, QSize size)
{
    const auto format = static_cast<AVPixelFormat>(frame.format);
    const bool transparent = isTransparent(format);
    if (size.isEmpty() ||
        !setUp({frame.width, frame.height, frame.format, size.width(), size.height(), rgbFormat,
                standardOf(frame), isFullRange(frame) ? 1 : 0, 1},
               flagsFor(QSize(frame.width, frame.height), size)))
        return {};
    // Scalers write whole vectors, beyond the end of a row and of the last one.
    QImage picture = m_pictures.take(
        size, transparent ? QImage::Format_ARGB32 : QImage::Format_RGB32, PixelPool::Rows::Padded);
    if (picture.isNull())
        return {};
    const std::array<std::uint8_t*, 4> out{picture.bits()};
    const std::array<int, 4> outStrides{picture.bytesPerLine()};
    const int lines = sws_scale(m_scaler.get(), frame.data, frame.linesize, 0, frame.height,
                                out.data(), outStrides.data());
    if (lines != size.height())
        return {};
    return transparent ? std::move(picture).convertToFormat(QImage::Format_ARGB32_Premultiplied)
                       : picture;
}

bool PictureConverter::toFrame(const QImage& picture, AVFrame& frame)
{
    if (!setUp({picture.width(), picture.height(), rgbFormat, frame.width, frame.height,
                frame.format, SWS_CS_ITU709, 1, 0},
               flagsFor(picture.size(), QSize(frame.width, frame.height))))
        return false;
    const std::array<const std::uint8_t*, 4> in{picture.constBits()};
    const std::array<int, 4> inStrides{picture.bytesPerLine()};
    const int lines = sws_scale(m_scaler.get(), in.data(), inStrides.data(), 0, picture.height(),
                                frame.data, frame.linesize);
    return lines == frame.height;
}

} // namespace rvengine
