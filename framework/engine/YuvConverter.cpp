// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "YuvConverter.h"

extern "C" {
#include <libswscale/swscale.h>
}

#include <array>

namespace rvengine {

namespace {

/// The byte order of a QRgb.
constexpr AVPixelFormat rgbFormat =
    Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? AV_PIX_FMT_BGRA : AV_PIX_FMT_ARGB;

/// Where the planes of a picture stand, as the scaler takes them.
struct Planes
{
    std::array<const std::uint8_t*, 4> data;
    std::array<int, 4> strides;
};

/// MLT's own arithmetic puts the third plane of an even size in the wrong place.
Planes planesOf(const std::uint8_t* pixels, QSize size)
{
    const int luma = size.width() * size.height();
    return {{pixels, pixels + luma, pixels + luma + luma / 4, nullptr},
            {size.width(), size.width() / 2, size.width() / 2, 0}};
}

const int* coefficientsOf(int standard)
{
    switch (standard) {
    case 601:
    case 170:
    case 470:
        return sws_getCoefficients(SWS_CS_ITU601);
    case 240:
        return sws_getCoefficients(SWS_CS_SMPTE240M);
    case 2020:
        return sws_getCoefficients(SWS_CS_BT2020);
    default:
        return sws_getCoefficients(SWS_CS_ITU709);
    }
}

/// Whole pictures need no filter; smaller ones average what they leave out.
int flagsFor(QSize from, QSize to)
{
    return from == to ? SWS_FAST_BILINEAR : SWS_BILINEAR;
}

constexpr int one = 1 << 16; ///< brightness 0, contrast and saturation 1 in the scaler's terms

} // namespace

struct YuvConverter::Scaler
{
    SwsContext* toRgb = nullptr;
    SwsContext* toYuv = nullptr;
    /// For what `toRgb` was set up: that makes tables, which takes as long as some lines.
    const SwsContext* setUp = nullptr;
    YuvColours colours;
    QSize size;
    QSize result;

    void setColours(YuvColours wanted)
    {
        if (setUp == toRgb && colours.standard == wanted.standard &&
            colours.fullRange == wanted.fullRange)
            return;
        const int* const coefficients = coefficientsOf(wanted.standard);
        sws_setColorspaceDetails(toRgb, coefficients, wanted.fullRange ? 1 : 0, coefficients, 1, 0,
                                 one, one);
        setUp = toRgb;
        colours = wanted;
    }

    ~Scaler()
    {
        sws_freeContext(toRgb);
        sws_freeContext(toYuv);
    }
};

YuvConverter::YuvConverter()
    : m_scaler(std::make_unique<Scaler>())
{
}

YuvConverter::~YuvConverter() = default;

QImage YuvConverter::convert(const std::uint8_t* pixels, QSize size, YuvColours colours,
                             QSize result)
{
    QImage picture(result, QImage::Format_RGB32);
    if (size != m_scaler->size || result != m_scaler->result)
        m_scaler->setUp = nullptr; // another context may stand where the last one stood
    m_scaler->size = size;
    m_scaler->result = result;
    m_scaler->toRgb = sws_getCachedContext(
        m_scaler->toRgb, size.width(), size.height(), AV_PIX_FMT_YUV420P, result.width(),
        result.height(), rgbFormat, flagsFor(size, result), nullptr, nullptr, nullptr);
    if (picture.isNull() || !m_scaler->toRgb)
        return {};
    m_scaler->setColours(colours);
    const auto planes = planesOf(pixels, size);
    const std::array<std::uint8_t*, 4> out{picture.bits()};
    const std::array<int, 4> outStrides{picture.bytesPerLine()};
    const int lines = sws_scale(m_scaler->toRgb, planes.data.data(), planes.strides.data(), 0,
                                size.height(), out.data(), outStrides.data());
    return lines == result.height() ? picture : QImage();
}

bool YuvConverter::convertBack(const QImage& picture, std::uint8_t* pixels)
{
    const QSize size = picture.size();
    m_scaler->toYuv = sws_getCachedContext(m_scaler->toYuv, size.width(), size.height(), rgbFormat,
                                           size.width(), size.height(), AV_PIX_FMT_YUYV422,
                                           SWS_FAST_BILINEAR, nullptr, nullptr, nullptr);
    if (!m_scaler->toYuv)
        return false;
    const int* const coefficients = sws_getCoefficients(SWS_CS_ITU709);
    sws_setColorspaceDetails(m_scaler->toYuv, coefficients, 1, coefficients, 0, 0, one, one);
    const std::array<const std::uint8_t*, 4> in{picture.constBits()};
    const std::array<int, 4> inStrides{picture.bytesPerLine()};
    const std::array<std::uint8_t*, 4> out{pixels};
    const std::array<int, 4> outStrides{2 * size.width()};
    const int lines = sws_scale(m_scaler->toYuv, in.data(), inStrides.data(), 0, size.height(),
                                out.data(), outStrides.data());
    return lines == size.height();
}

} // namespace rvengine
