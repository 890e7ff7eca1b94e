// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QSize>

#include <cstdint>
#include <memory>

namespace rvengine {

/// How the colours of a YUV picture are to be understood.
struct YuvColours
{
    int standard = 709; ///< ITU-R BT.601 or 709, SMPTE 240, BT.2020, by number
    bool fullRange = false;
};

/// Converts YUV pictures, as MLT holds them, to RGB and back. Keeps what is costly to set up while
/// size and colours stay the same. Used by one thread at a time.
class YuvConverter
{
public:
    YuvConverter();
    ~YuvConverter();
    YuvConverter(const YuvConverter&) = delete;
    YuvConverter& operator=(const YuvConverter&) = delete;

    /// The picture of even `size` whose three planes stand one after the other at `pixels`, scaled
    /// to `result`, as Format_RGB32; null when that cannot be done.
    QImage convert(const std::uint8_t* pixels, QSize size, YuvColours colours, QSize result);

    /// Writes a picture of even width in Format_RGB32 to `pixels` as packed YUV 4:2:2 (YUYV), in
    /// the colours of BT.709 with limited range. False when that cannot be done.
    bool convertBack(const QImage& picture, std::uint8_t* pixels);

private:
    struct Scaler;
    const std::unique_ptr<Scaler> m_scaler;
};

} // namespace rvengine
